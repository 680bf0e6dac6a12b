#include "Platform/Linux/KeyCodes/EvdevKeyCodes.h"

#include "KeyboardMapping/KeyboardLayout.h"
#include "KeyboardMapping/PhysicalKeyMapper.h"

#include <linux/input-event-codes.h>

#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string>
#include <vector>

namespace tavro {
namespace {

using linuxos::EvdevKeyCodes;

/// The playable rows as the kernel counts them, bottom row first.
const std::array<std::vector<std::uint32_t>, 4> rowsOfCodes{{
    {KEY_Z, KEY_X, KEY_C, KEY_V, KEY_B, KEY_N, KEY_M, KEY_COMMA, KEY_DOT, KEY_SLASH},
    {KEY_A, KEY_S, KEY_D, KEY_F, KEY_G, KEY_H, KEY_J, KEY_K, KEY_L, KEY_SEMICOLON, KEY_APOSTROPHE},
    {KEY_Q, KEY_W, KEY_E, KEY_R, KEY_T, KEY_Y, KEY_U, KEY_I, KEY_O, KEY_P, KEY_LEFTBRACE, KEY_RIGHTBRACE},
    {KEY_1, KEY_2, KEY_3, KEY_4, KEY_5, KEY_6, KEY_7, KEY_8, KEY_9, KEY_0, KEY_MINUS, KEY_EQUAL},
}};

constexpr std::uint32_t lastKeyboardCode = 0x2ff;

struct LayoutRows {
    KeyboardLayoutKind kind;
    std::array<std::u32string, 4> rows;
};

const std::array<LayoutRows, 2> layouts{{
    {KeyboardLayoutKind::qwerty, {U"zxcvbnm,./", U"asdfghjkl;'", U"qwertyuiop[]", U"1234567890-="}},
    {KeyboardLayoutKind::qwertz, {U"yxcvbnm,.-", U"asdfghjklöä", U"qwertzuiopü+", U"1234567890ß´"}},
}};

TEST(EvdevKeyCodes, EveryPlayablePositionGivesItsCharacterInBothLayouts) {
    for (const auto& layout : layouts) {
        for (std::size_t row = 0; row < rowsOfCodes.size(); ++row) {
            ASSERT_EQ(rowsOfCodes[row].size(), layout.rows[row].size());
            for (std::size_t column = 0; column < rowsOfCodes[row].size(); ++column) {
                const auto code = rowsOfCodes[row][column];
                EXPECT_EQ(PhysicalKeyMapper::character(EvdevKeyCodes::virtualKeyCode(code), layout.kind),
                          layout.rows[row][column])
                    << "kernel code " << code;
            }
        }
    }
}

TEST(EvdevKeyCodes, EveryCharacterOfALayoutHasExactlyOnePosition) {
    for (const auto& layout : layouts) {
        std::multiset<Character> reached;
        for (std::uint32_t code = 0; code <= lastKeyboardCode; ++code) {
            if (const auto character =
                    PhysicalKeyMapper::character(EvdevKeyCodes::virtualKeyCode(code), layout.kind)) {
                reached.insert(*character);
            }
        }
        std::multiset<Character> wanted;
        for (const auto& row : KeyboardLayout::of(layout.kind).rows()) {
            wanted.insert(row.keys.begin(), row.keys.end());
        }
        EXPECT_EQ(reached, wanted);
        EXPECT_EQ(wanted.size(), 45u);
    }
}

TEST(EvdevKeyCodes, DifferentKeysStayDifferent) {
    std::set<std::int64_t> codes;
    for (std::uint32_t code = 0; code <= lastKeyboardCode; ++code) {
        EXPECT_TRUE(codes.insert(EvdevKeyCodes::virtualKeyCode(code)).second) << "kernel code " << code;
    }
}

TEST(EvdevKeyCodes, KeysThatDoNotPlay) {
    EXPECT_EQ(EvdevKeyCodes::virtualKeyCode(KEY_GRAVE), 50);
    EXPECT_EQ(EvdevKeyCodes::virtualKeyCode(KEY_102ND), 10);
    EXPECT_EQ(EvdevKeyCodes::virtualKeyCode(KEY_ENTER), 36);
    EXPECT_EQ(EvdevKeyCodes::virtualKeyCode(KEY_TAB), 48);
    EXPECT_EQ(EvdevKeyCodes::virtualKeyCode(KEY_SPACE), 49);
    EXPECT_EQ(EvdevKeyCodes::virtualKeyCode(KEY_BACKSPACE), 51);
    EXPECT_EQ(EvdevKeyCodes::virtualKeyCode(KEY_ESC), 53);
    EXPECT_EQ(EvdevKeyCodes::virtualKeyCode(KEY_DELETE), 117);
    EXPECT_EQ(EvdevKeyCodes::virtualKeyCode(KEY_KPENTER), 76);
    EXPECT_EQ(EvdevKeyCodes::virtualKeyCode(KEY_KP5), 87);
    EXPECT_EQ(EvdevKeyCodes::virtualKeyCode(KEY_F1), 122);
    EXPECT_EQ(EvdevKeyCodes::virtualKeyCode(KEY_F12), 111);
    EXPECT_EQ(EvdevKeyCodes::virtualKeyCode(KEY_F13), 105);
    EXPECT_EQ(EvdevKeyCodes::virtualKeyCode(KEY_UP), 126);
    EXPECT_EQ(EvdevKeyCodes::virtualKeyCode(KEY_DOWN), 125);
    EXPECT_EQ(EvdevKeyCodes::virtualKeyCode(KEY_LEFT), 123);
    EXPECT_EQ(EvdevKeyCodes::virtualKeyCode(KEY_RIGHT), 124);
}

TEST(EvdevKeyCodes, KeysThatNoMacHasKeepTheirOwnNumberFarAway) {
    EXPECT_EQ(EvdevKeyCodes::virtualKeyCode(KEY_PRINT), 0x1000 + KEY_PRINT);
    EXPECT_EQ(EvdevKeyCodes::virtualKeyCode(KEY_SYSRQ), 0x1000 + KEY_SYSRQ);
    EXPECT_EQ(EvdevKeyCodes::virtualKeyCode(0), 0x1000);
}

} // namespace
} // namespace tavro
