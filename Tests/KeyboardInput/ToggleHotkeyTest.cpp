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

TEST(ToggleHotkey, IsWrittenAsJsonWithoutWhiteSpace) {
    EXPECT_EQ(ToggleHotkey().encode(), R"({"key":"^","modifiersRawValue":0})");
    EXPECT_EQ((ToggleHotkey{U'p', 35, HotkeyModifiers(9)}).encode(),
              R"({"key":"p","keyCode":35,"modifiersRawValue":9})");
    EXPECT_EQ((ToggleHotkey{U'\u00F6', -1, HotkeyModifiers(0x7F00)}).encode(),
              "{\"key\":\"\u00F6\",\"keyCode\":-1,\"modifiersRawValue\":32512}");
}

TEST(ToggleHotkey, IsReadAsItWasWritten) {
    for (const auto character : {U'^', U'"', U'\\', U'\u00F6', U'\0', U'\U0001F3B9'}) {
        for (const auto keyCode : {std::optional<std::int64_t>(), std::optional<std::int64_t>(50)}) {
            const ToggleHotkey hotkey{character, keyCode, HotkeyModifiers(-2)};
            EXPECT_EQ(ToggleHotkey::decode(hotkey.encode()), hotkey) << hotkey.encode();
        }
    }
}

TEST(ToggleHotkey, IsReadWithAnyTextAsItsKeyAndOnlyWhole) {
    EXPECT_EQ(ToggleHotkey::decode(R"({"key":" Ctrl K\n","modifiersRawValue":2.0,"keyCode":null})"),
              (ToggleHotkey{U'k', std::nullopt, HotkeyModifiers::control}));
    for (const auto* const bad :
         {"", "[]", R"({"key":"a"})", R"({"modifiersRawValue":0})", R"({"key":1,"modifiersRawValue":0})",
          R"({"key":"a","keyCode":"1","modifiersRawValue":0})"}) {
        EXPECT_EQ(ToggleHotkey::decode(bad), std::nullopt) << bad;
    }
}

} // namespace
} // namespace tavro
