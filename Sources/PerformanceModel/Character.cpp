#include "PerformanceModel/Character.h"

#include <utf8proc.h>

#include <cstdlib>
#include <memory>

namespace tavro {

Character lowercased(Character character) {
    // Nearly every key is ASCII, and this runs many times for each press.
    if (character < 0x80) {
        return character >= U'A' && character <= U'Z' ? character + (U'a' - U'A') : character;
    }
    return static_cast<Character>(utf8proc_tolower(static_cast<utf8proc_int32_t>(character)));
}

std::string toUtf8(Character character) {
    const auto scalar = static_cast<utf8proc_int32_t>(character);
    if (!utf8proc_codepoint_valid(scalar)) {
        return {};
    }
    utf8proc_uint8_t bytes[4];
    const auto length = utf8proc_encode_char(scalar, bytes);
    return {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length)};
}

std::optional<std::u32string> charactersOf(std::string_view utf8) {
    utf8proc_uint8_t* mapped = nullptr;
    const auto mappedLength =
        utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(utf8.data()),
                     static_cast<utf8proc_ssize_t>(utf8.size()), &mapped, UTF8PROC_COMPOSE);
    if (mappedLength < 0) {
        return std::nullopt;
    }
    const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> composed(mapped, &std::free);
    std::u32string characters;
    utf8proc_ssize_t position = 0;
    while (position < mappedLength) {
        utf8proc_int32_t scalar = 0;
        position += utf8proc_iterate(composed.get() + position, mappedLength - position, &scalar);
        characters.push_back(static_cast<Character>(scalar));
    }
    return characters;
}

} // namespace tavro
