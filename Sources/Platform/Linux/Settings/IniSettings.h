#pragma once

#include "PlatformInterfaces/UserDefaults.h"

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace tavro::linuxos {

/// Settings as earlier versions stored them: an INI file of one section, one line for each value. They are
/// read and never written.
///
///     [Settings]
///     TAVRO.LaunchAtLogin.v1=true
///     TAVRO.SelectedPresetID.v1="default"
///     TAVRO.GlobalPlayHotkey.v1=data "{\"key\":\"^\",\"modifiersRawValue\":0}"
///
/// A text stands in quotation marks, data too, after its word. In quotation marks \" \\ \n \r \t and \xHH (a
/// byte) are escapes. Keys of other characters than A-Z a-z 0-9 . - _ stand in quotation marks as well. Lines
/// that begin with ; or # are comments. A line that cannot be read is as good as absent; of several values of
/// one key the last counts.
class IniSettings final : public UserDefaults {
public:
    using Values = std::map<std::string, Value>;

    explicit IniSettings(std::filesystem::path file) : file_(std::move(file)) {}

    [[nodiscard]] static Values parse(std::string_view text);

    /// What is in the file; nothing when there is none. Throws `std::system_error` when it cannot be read.
    [[nodiscard]] static Values read(const std::filesystem::path& file);

    [[nodiscard]] std::optional<Value> value(const std::string& key) const override;

    /// Always false.
    bool setValue(const std::string& /*key*/, const Value& /*value*/) override { return false; }

    /// Always null.
    [[nodiscard]] std::unique_ptr<UserDefaults> suite(const std::string& /*name*/) const override {
        return nullptr;
    }

private:
    std::filesystem::path file_;
};

} // namespace tavro::linuxos
