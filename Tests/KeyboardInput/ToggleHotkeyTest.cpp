#include "KeyboardInput/ToggleHotkey.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace tavro {
namespace {

constexpr auto qwerty = KeyboardLayoutKind::qwerty;
constexpr auto qwertz = KeyboardLayoutKind::qwertz;

struct TextCase {
    std::string text;
    Character character;
};

class HotkeyText : public testing::TestWithParam<TextCase> {};

TEST_P(HotkeyText, MeansItsLastCharacter) {
    EXPECT_EQ(ToggleHotkey::characterOf(GetParam().text), GetParam().character);
}

INSTANTIATE_TEST_SUITE_P(Texts, HotkeyText,
                         testing::Values(TextCase{"^", U'^'}, TextCase{"  ^ ", U'^'}, TextCase{"", U'^'},
                                         TextCase{" \t\r\n", U'^'}, TextCase{"\xC2\xA0", U'^'},
                                         TextCase{"k", U'k'}, TextCase{"K", U'k'}, TextCase{"k\n", U'k'},
                                         TextCase{"Ctrl+K", U'k'}, TextCase{"a b", U'b'},
                                         TextCase{"\xC3\x96", U'\u00F6'}, TextCase{"O\xCC\x88", U'\u00F6'},
                                         TextCase{"\xC2\xB4", U'\u00B4'}));

TEST(CaretKey, IsEitherKeyAtTheEdgeOfTheKeyboard) {
    for (std::int64_t keyCode = -1; keyCode < 128; ++keyCode) {
        EXPECT_EQ(ToggleHotkey::isCaretKey(keyCode), keyCode == 10 || keyCode == 50) << keyCode;
    }
}

TEST(ToggleHotkey, IsTheCaretWithoutModifiersAtFirst) {
    const ToggleHotkey hotkey;
    EXPECT_EQ(hotkey.character, U'^');
    EXPECT_EQ(hotkey.keyCode, std::nullopt);
    EXPECT_EQ(hotkey.modifiers, HotkeyModifiers());
    for (const auto layout : allKeyboardLayoutKinds) {
        EXPECT_TRUE(hotkey.matches(10, {}, layout));
        EXPECT_TRUE(hotkey.matches(50, {}, layout));
        EXPECT_FALSE(hotkey.matches(0, {}, layout));
        EXPECT_FALSE(hotkey.matches(22, {}, layout));
    }
}

TEST(ToggleHotkey, WithAKeyCodeIsThatKeyOnEveryLayout) {
    const ToggleHotkey hotkey{U'z', 16, {}};
    for (const auto layout : allKeyboardLayoutKinds) {
        EXPECT_TRUE(hotkey.matches(16, {}, layout));
        EXPECT_FALSE(hotkey.matches(6, {}, layout));
    }
    EXPECT_FALSE((ToggleHotkey{U'^', 50, {}}).matches(10, {}, qwertz));
    EXPECT_TRUE((ToggleHotkey{U'^', 100, {}}).matches(100, {}, qwertz));
}

TEST(ToggleHotkey, WithoutAKeyCodeFollowsTheLayout) {
    const ToggleHotkey hotkey{U'z', std::nullopt, {}};
    EXPECT_TRUE(hotkey.matches(6, {}, qwerty));
    EXPECT_FALSE(hotkey.matches(16, {}, qwerty));
    EXPECT_TRUE(hotkey.matches(16, {}, qwertz));
    EXPECT_FALSE(hotkey.matches(6, {}, qwertz));
    EXPECT_TRUE((ToggleHotkey{U'\u00F6', std::nullopt, {}}).matches(41, {}, qwertz));
    EXPECT_FALSE((ToggleHotkey{U'\u00F6', std::nullopt, {}}).matches(41, {}, qwerty));
}

TEST(ToggleHotkey, OfACharacterThatNoKeyHasNeverMatches) {
    const ToggleHotkey hotkey{U'#', std::nullopt, {}};
    for (std::int64_t keyCode = -1; keyCode < 200; ++keyCode) {
        EXPECT_FALSE(hotkey.matches(keyCode, {}, qwertz)) << keyCode;
    }
}

TEST(ToggleHotkey, NeedsExactlyItsModifiers) {
    for (std::int64_t wanted = 0; wanted < 16; ++wanted) {
        const HotkeyModifiers modifiers(wanted);
        for (std::int64_t pressed = 0; pressed < 16; ++pressed) {
            const HotkeyModifiers held(pressed);
            EXPECT_EQ((ToggleHotkey{U'^', std::nullopt, modifiers}).matches(50, held, qwertz),
                      wanted == pressed);
            EXPECT_EQ((ToggleHotkey{U'k', 40, modifiers}).matches(40, held, qwertz), wanted == pressed);
            EXPECT_EQ((ToggleHotkey{U'k', std::nullopt, modifiers}).matches(40, held, qwertz),
                      wanted == pressed);
        }
    }
}

} // namespace
} // namespace tavro
