#pragma once

#include "Platform/Linux/Settings/SettingsText.h"
#include "PlatformInterfaces/UserDefaults.h"

#include <filesystem>
#include <utility>

namespace tavro::linuxos {

/// Settings in a file: tavro.json in the folder tavro of the user's configuration folder. While there is
/// none, those that an earlier version has stored in tavro.ini count; the first write takes them along, and
/// leaves that file as it is. A suite is a NAME.ini of an earlier version beside it, which is read and never
/// written.
///
/// What cannot be read is as good as absent. Before such a file is written for the first time, a copy of it
/// is kept beside it as tavro.json.broken; an older copy with other contents is never touched, the new one
/// becomes tavro.json.broken-2 and so on. A file that exists and cannot be read at all is never replaced.
class UserDefaultsAdapter final : public UserDefaults {
public:
    /// The user's own.
    UserDefaultsAdapter();

    /// Those of a folder, which need not exist.
    explicit UserDefaultsAdapter(std::filesystem::path folder) : folder_(std::move(folder)) {}

    [[nodiscard]] std::optional<Value> value(const std::string& key) const override;
    bool setValue(const std::string& key, const Value& value) override;
    /// Null for the name of the standard database and for what cannot be a file's name, too.
    [[nodiscard]] std::unique_ptr<UserDefaults> suite(const std::string& name) const override;

private:
    [[nodiscard]] SettingsText textOf(const std::optional<std::string>& contents) const;

    std::filesystem::path folder_;
    std::filesystem::path file_ = folder_ / "tavro.json";
};

} // namespace tavro::linuxos
