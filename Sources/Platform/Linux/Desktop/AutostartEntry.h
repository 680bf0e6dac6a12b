#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tavro::linuxos {

/// The desktop entry that makes desktops start the program when the user logs in.
struct AutostartEntry {
    /// The user has switched it off: the desktops' settings say so in the entry, in one of two ways.
    bool isHidden = false;

    /// The text of the entry that starts this program. Throws `std::invalid_argument`, with a reason, for a
    /// path that no entry can hold.
    [[nodiscard]] static std::string text(const std::string& program);

    /// Nothing when the text is no entry that a desktop could start.
    [[nodiscard]] static std::optional<AutostartEntry> parse(std::string_view text);
};

} // namespace tavro::linuxos
