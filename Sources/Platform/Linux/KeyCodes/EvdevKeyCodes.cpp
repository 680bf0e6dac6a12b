#include "Platform/Linux/KeyCodes/EvdevKeyCodes.h"

#include <unordered_map>

namespace tavro::linuxos {

namespace {

// Plain numbers: the codes never change, and the adapters that need them also build where the kernel's header
// is absent.
const std::unordered_map<std::uint32_t, std::int64_t>& virtualKeyCodes() {
    static const std::unordered_map<std::uint32_t, std::int64_t> table{
        // The main block, row by row from Escape.
        {1, 53},  // Escape
        {2, 18},  // 1
        {3, 19},  // 2
        {4, 20},  // 3
        {5, 21},  // 4
        {6, 23},  // 5
        {7, 22},  // 6
        {8, 26},  // 7
        {9, 28},  // 8
        {10, 25}, // 9
        {11, 29}, // 0
        {12, 27}, // Minus
        {13, 24}, // Equal
        {14, 51}, // Backspace
        {15, 48}, // Tab
        {16, 12}, // Q
        {17, 13}, // W
        {18, 14}, // E
        {19, 15}, // R
        {20, 17}, // T
        {21, 16}, // Y
        {22, 32}, // U
        {23, 34}, // I
        {24, 31}, // O
        {25, 35}, // P
        {26, 33}, // Left bracket
        {27, 30}, // Right bracket
        {28, 36}, // Return
        {30, 0},  // A
        {31, 1},  // S
        {32, 2},  // D
        {33, 3},  // F
        {34, 5},  // G
        {35, 4},  // H
        {36, 38}, // J
        {37, 40}, // K
        {38, 37}, // L
        {39, 41}, // Semicolon
        {40, 39}, // Apostrophe
        {41, 50}, // Grave
        {43, 42}, // Backslash
        {44, 6},  // Z
        {45, 7},  // X
        {46, 8},  // C
        {47, 9},  // V
        {48, 11}, // B
        {49, 45}, // N
        {50, 46}, // M
        {51, 43}, // Comma
        {52, 47}, // Dot
        {53, 44}, // Slash
        {57, 49}, // Space
        {86, 10}, // the key beside the left Shift on ISO keyboards
        // Function keys.
        {59, 122},  // F1
        {60, 120},  // F2
        {61, 99},   // F3
        {62, 118},  // F4
        {63, 96},   // F5
        {64, 97},   // F6
        {65, 98},   // F7
        {66, 100},  // F8
        {67, 101},  // F9
        {68, 109},  // F10
        {87, 103},  // F11
        {88, 111},  // F12
        {183, 105}, // F13
        {184, 107}, // F14
        {185, 113}, // F15
        {186, 106}, // F16
        {187, 64},  // F17
        {188, 79},  // F18
        {189, 80},  // F19
        {190, 90},  // F20
        // Keypad.
        {55, 67},  // *
        {71, 89},  // 7
        {72, 91},  // 8
        {73, 92},  // 9
        {74, 78},  // -
        {75, 86},  // 4
        {76, 87},  // 5
        {77, 88},  // 6
        {78, 69},  // +
        {79, 83},  // 1
        {80, 84},  // 2
        {81, 85},  // 3
        {82, 82},  // 0
        {83, 65},  // the decimal sign
        {96, 76},  // Enter
        {98, 75},  // /
        {117, 81}, // =
        {121, 95}, // the comma of some keypads
        // Around the arrows.
        {102, 115}, // Home
        {103, 126}, // Up
        {104, 116}, // Page Up
        {105, 123}, // Left
        {106, 124}, // Right
        {107, 119}, // End
        {108, 125}, // Down
        {109, 121}, // Page Down
        {110, 114}, // Insert, where the Mac has Help
        {111, 117}, // forward Delete
        {127, 110}, // the menu key
        // Sound, and the keys of Japanese keyboards.
        {113, 74},  // Mute
        {114, 73},  // Volume Down
        {115, 72},  // Volume Up
        {89, 94},   // Ro
        {124, 93},  // Yen
        {122, 104}, // Hangeul, where the Mac has Kana
        {123, 102}, // Hanja, where the Mac has Eisu
    };
    return table;
}

} // namespace

std::int64_t EvdevKeyCodes::virtualKeyCode(std::uint32_t evdevCode) {
    const auto& table = virtualKeyCodes();
    const auto found = table.find(evdevCode);
    return found == table.end() ? foreignKeyBase + evdevCode : found->second;
}

} // namespace tavro::linuxos
