#include "KeyboardMapping/PhysicalKeyMapper.h"

#include <array>

namespace tavro {

namespace {

struct PhysicalKey {
    std::size_t keyCode;
    Character qwerty;
    Character qwertz;
};

constexpr std::array<PhysicalKey, 45> physicalKeys{{
    // Number row, left to right.
    {18, U'1', U'1'},
    {19, U'2', U'2'},
    {20, U'3', U'3'},
    {21, U'4', U'4'},
    {23, U'5', U'5'},
    {22, U'6', U'6'},
    {26, U'7', U'7'},
    {28, U'8', U'8'},
    {25, U'9', U'9'},
    {29, U'0', U'0'},
    {27, U'-', U'\u00DF'},
    {24, U'=', U'\u00B4'},
    // The row above the home row.
    {12, U'q', U'q'},
    {13, U'w', U'w'},
    {14, U'e', U'e'},
    {15, U'r', U'r'},
    {17, U't', U't'},
    {16, U'y', U'z'},
    {32, U'u', U'u'},
    {34, U'i', U'i'},
    {31, U'o', U'o'},
    {35, U'p', U'p'},
    {33, U'[', U'\u00FC'},
    {30, U']', U'+'},
    // The home row.
    {0, U'a', U'a'},
    {1, U's', U's'},
    {2, U'd', U'd'},
    {3, U'f', U'f'},
    {5, U'g', U'g'},
    {4, U'h', U'h'},
    {38, U'j', U'j'},
    {40, U'k', U'k'},
    {37, U'l', U'l'},
    {41, U';', U'\u00F6'},
    {39, U'\'', U'\u00E4'},
    // The bottom row.
    {6, U'z', U'y'},
    {7, U'x', U'x'},
    {8, U'c', U'c'},
    {9, U'v', U'v'},
    {11, U'b', U'b'},
    {45, U'n', U'n'},
    {46, U'm', U'm'},
    {43, U',', U','},
    {47, U'.', U'.'},
    {44, U'/', U'-'},
}};

using CodeTable = std::array<Character, 48>;

constexpr CodeTable tableOf(Character PhysicalKey::* character) {
    CodeTable table{};
    for (const auto& key : physicalKeys) {
        table[key.keyCode] = key.*character;
    }
    return table;
}

constexpr CodeTable qwertyByCode = tableOf(&PhysicalKey::qwerty);
constexpr CodeTable qwertzByCode = tableOf(&PhysicalKey::qwertz);

} // namespace

std::optional<Character> PhysicalKeyMapper::character(std::int64_t keyCode, KeyboardLayoutKind layout) {
    const auto& table = layout == KeyboardLayoutKind::qwerty ? qwertyByCode : qwertzByCode;
    if (keyCode < 0 || keyCode >= static_cast<std::int64_t>(table.size())) {
        return std::nullopt;
    }
    const auto character = table[static_cast<std::size_t>(keyCode)];
    return character == noKey ? std::nullopt : std::optional(character);
}

} // namespace tavro
