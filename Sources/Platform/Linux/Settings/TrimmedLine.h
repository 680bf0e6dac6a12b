#pragma once

#include <string_view>

namespace tavro::linuxos {

/// The line without the blanks around it, among them the end of a line that was written on another system.
[[nodiscard]] constexpr std::string_view trimmed(std::string_view line) {
    constexpr std::string_view blanks = " \t\r";
    const auto first = line.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : line.substr(first, line.find_last_not_of(blanks) - first + 1);
}

} // namespace tavro::linuxos
