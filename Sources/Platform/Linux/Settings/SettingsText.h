#pragma once

#include "PlatformInterfaces/UserDefaults.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tavro::linuxos {

/// The text of a settings file: one JSON object, in the order of its keys.
///
///     {
///         "TAVRO.GlobalPlayHotkey.v1": {
///             "data": "{\"key\":\"^\",\"modifiersRawValue\":0}"
///         },
///         "TAVRO.LaunchAtLogin.v1": true,
///         "TAVRO.SelectedPresetID.v1": "default"
///     }
///
/// Texts, booleans and integers are what JSON has for them. Data are an object with the one key "data": a
/// text, or the bytes as an array of numbers when they are not UTF-8.
struct SettingsText {
    std::map<std::string, UserDefaults::Value> values;
    /// False when there was something that is none of these values, or no JSON; what is missing is missing.
    bool isWhole = true;

    /// Reads what can be read: where the text stops being JSON, the values before it. None of them is shorter
    /// than it was. The last of several values of one key counts. A text without anything is whole.
    [[nodiscard]] static SettingsText parse(std::string_view text);

    /// Reading it gives the same values. Nothing when a key or a text is not UTF-8.
    [[nodiscard]] std::optional<std::string> format() const;
};

} // namespace tavro::linuxos
