#pragma once

#include "PerformanceModel/Character.h"

#include <string_view>

namespace tavro {

/// Whether Unicode counts it as white space or as the end of a line.
[[nodiscard]] bool isWhiteSpace(Character character);

/// The text without the white space around it. The text is in UTF-8; bytes that are not are no white space.
[[nodiscard]] std::string_view trimmed(std::string_view utf8);

/// The text without the byte order mark that some editors put before it.
[[nodiscard]] std::string_view withoutByteOrderMark(std::string_view utf8);

} // namespace tavro
