#pragma once

#include "PlatformInterfaces/UserDefaults.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tavro::headless {

/// Settings in memory. A suite shares its values with every other adapter of the same suite that came from
/// the same standard database, and with nobody else.
class UserDefaultsAdapter final : public UserDefaults {
public:
    using Values = std::map<std::string, Value>;

    UserDefaultsAdapter() : UserDefaultsAdapter(std::make_shared<Databases>(), {}) {}

    /// Makes every write fail while it is set.
    bool refusesWrites = false;

    /// Every write that was asked for, refused ones too, in order.
    std::vector<std::pair<std::string, Value>> writes;

    /// Every key that was read, in order, as "key" or "suite/key".
    [[nodiscard]] const std::vector<std::string>& reads() const { return databases_->reads; }

    [[nodiscard]] const Values& values() const { return databases_->values[name_]; }

    /// Makes the suite one that can be opened, with these values.
    void addSuite(const std::string& name, Values values) { databases_->values[name] = std::move(values); }

    [[nodiscard]] std::optional<Value> value(const std::string& key) const override;
    bool setValue(const std::string& key, const Value& value) override;
    [[nodiscard]] std::unique_ptr<UserDefaults> suite(const std::string& name) const override;

private:
    struct Databases {
        /// By suite; the standard database has the empty name.
        std::map<std::string, Values> values;
        std::vector<std::string> reads;
    };

    UserDefaultsAdapter(std::shared_ptr<Databases> databases, std::string name)
        : databases_(std::move(databases)), name_(std::move(name)) {}

    std::shared_ptr<Databases> databases_;
    std::string name_;
};

} // namespace tavro::headless
