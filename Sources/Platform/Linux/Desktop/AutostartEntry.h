#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tavro::linuxos {

/// The desktop entry that makes desktops start the program when the user logs in.
struct AutostartEntry {
    /// The user has switched it off: the desktops' settings say so in the entry, in one of two ways.
    bool isHidden = false;

    /// The text of the entry that starts this program. Nothing for a path that no entry can hold, as it is
    /// not UTF-8.
    [[nodiscard]] static std::optional<std::string> text(const std::string& program);

    /// Nothing when the text is no entry that a desktop could start.
    [[nodiscard]] static std::optional<AutostartEntry> parse(std::string_view text);
};

} // namespace tavro::linuxos
