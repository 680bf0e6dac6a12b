#pragma once

#include "PlatformInterfaces/UserDefaults.h"

namespace tavro::macos {

/// The system's preferences of this application, and of another one as a suite. Every suite can be opened but
/// this application's own and the one of all applications. Keys and texts that are not UTF-8 are refused.
class UserDefaultsAdapter final : public UserDefaults {
public:
    /// This application's.
    UserDefaultsAdapter() = default;

    [[nodiscard]] std::optional<Value> value(const std::string& key) const override;
    bool setValue(const std::string& key, const Value& value) override;
    [[nodiscard]] std::unique_ptr<UserDefaults> suite(const std::string& name) const override;

private:
    explicit UserDefaultsAdapter(std::string application);

    /// Empty for this one.
    std::string application_;
};

} // namespace tavro::macos
