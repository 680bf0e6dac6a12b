#pragma once

#include "PlatformInterfaces/UserDefaults.h"

#include <map>
#include <string>
#include <string_view>

namespace tavro::linuxos {

/// The text of a settings file: one section, one line for each value.
///
///     [Settings]
///     TAVRO.LaunchAtLogin.v1=true
///     TAVRO.SelectedPresetID.v1="default"
///     TAVRO.GlobalPlayHotkey.v1=data "{\"key\":\"^\",\"modifiersRawValue\":0}"
///
/// A text stands in quotation marks, data too, after its word. A value whose end is missing is thus never
/// taken for a shorter one. In quotation marks \" \\ \n \r \t and \xHH (a byte) are escapes; the file is
/// always UTF-8, since bytes that are not are written as escapes. Keys of other characters than A-Z a-z 0-9 .
/// - _ stand in quotation marks as well. Lines that begin with ; or # are comments.
struct SettingsText {
    std::map<std::string, UserDefaults::Value> values;
    /// False when there was a line that could not be read; its value is missing.
    bool isWhole = true;

    /// Reads what can be read. The last of several values of one key counts; line ends may be those of other
    /// systems.
    [[nodiscard]] static SettingsText parse(std::string_view text);

    /// Reading it gives the same values, whatever bytes they hold.
    [[nodiscard]] std::string format() const;
};

} // namespace tavro::linuxos
