#include "PerformanceModel/Text.h"

#include <utf8proc.h>

namespace tavro {

namespace {

/// How many bytes the white space has that the text begins with; 0 when it begins with something else.
std::size_t whiteSpaceLength(std::string_view utf8) {
    utf8proc_int32_t scalar = 0;
    const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(utf8.data()),
                                         static_cast<utf8proc_ssize_t>(utf8.size()), &scalar);
    return length > 0 && isWhiteSpace(static_cast<Character>(scalar)) ? static_cast<std::size_t>(length) : 0;
}

std::string_view lastCharacter(std::string_view utf8) {
    auto start = utf8.size() - 1;
    while (start > 0 && (static_cast<unsigned char>(utf8[start]) & 0xC0U) == 0x80U) {
        --start;
    }
    return utf8.substr(start);
}

} // namespace

bool isWhiteSpace(Character character) {
    return character == U' ' || (character >= U'\t' && character <= U'\r') || character == U'\u0085' ||
           character == U'\u00A0' || character == U'\u1680' ||
           (character >= U'\u2000' && character <= U'\u200A') || character == U'\u2028' ||
           character == U'\u2029' || character == U'\u202F' || character == U'\u205F' ||
           character == U'\u3000';
}

std::string_view trimmed(std::string_view utf8) {
    while (!utf8.empty() && whiteSpaceLength(utf8) > 0) {
        utf8.remove_prefix(whiteSpaceLength(utf8));
    }
    while (!utf8.empty() && whiteSpaceLength(lastCharacter(utf8)) == lastCharacter(utf8).size()) {
        utf8.remove_suffix(lastCharacter(utf8).size());
    }
    return utf8;
}

std::string_view withoutByteOrderMark(std::string_view utf8) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    return utf8.starts_with(mark) ? utf8.substr(mark.size()) : utf8;
}

} // namespace tavro
