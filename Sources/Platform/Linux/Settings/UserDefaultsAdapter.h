#pragma once

#include "PlatformInterfaces/UserDefaults.h"

#include <filesystem>

namespace tavro::linuxos {

/// Settings in files: tavro.ini in the folder tavro of the user's configuration folder, and NAME.ini beside
/// it for a suite, which can be opened when the file exists.
///
/// A line that cannot be read is as good as absent. Before such a file is written for the first time, a copy
/// of it is kept beside it as NAME.ini.broken; an older copy with other contents is never touched, the new
/// one becomes NAME.ini.broken-2 and so on. A file that exists and cannot be read at all is never replaced.
class UserDefaultsAdapter final : public UserDefaults {
public:
    /// The user's own.
    UserDefaultsAdapter();

    /// Those of a folder, which need not exist.
    explicit UserDefaultsAdapter(const std::filesystem::path& folder)
        : UserDefaultsAdapter(folder, "tavro") {}

    [[nodiscard]] std::optional<Value> value(const std::string& key) const override;
    bool setValue(const std::string& key, const Value& value) override;
    /// Null for the name of the standard database and for what cannot be a file's name, too.
    [[nodiscard]] std::unique_ptr<UserDefaults> suite(const std::string& name) const override;

private:
    UserDefaultsAdapter(const std::filesystem::path& folder, const std::string& name)
        : file_(folder / (name + ".ini")) {}

    std::filesystem::path file_;
};

} // namespace tavro::linuxos
