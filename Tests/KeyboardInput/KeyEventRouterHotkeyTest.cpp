#include "KeyboardInput/RecordingRouter.h"

#include <gmock/gmock.h>

#include <optional>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto control = HotkeyModifiers::control;
constexpr auto option = HotkeyModifiers::option;
constexpr auto shift = HotkeyModifiers::shift;

constexpr std::int64_t keyA = 0;
constexpr std::int64_t keyK = 40;
constexpr std::int64_t keyIso = 10;
constexpr std::int64_t keyGrave = 50;

class Hotkey : public testing::Test {
protected:
    RecordingRouter keys;
};

TEST_F(Hotkey, TogglesOnBothCaretKeys) {
    EXPECT_TRUE(keys.consumesTap(press(keyIso)));
    EXPECT_TRUE(keys.consumesTap(press(keyGrave)));
    EXPECT_THAT(keys.calls, ElementsAre("hotkey", "hotkey"));
}

TEST_F(Hotkey, RepeatingIsSwallowedWithoutToggling) {
    EXPECT_TRUE(keys.consumes(press(keyGrave)));
    EXPECT_TRUE(keys.consumes(repeat(keyGrave)));
    EXPECT_THAT(keys.calls, ElementsAre("hotkey"));
}

TEST_F(Hotkey, RepeatingWithModifiersPasses) {
    keys.router.hotkey.modifiers = control;
    EXPECT_TRUE(keys.consumes(press(keyGrave, control)));
    EXPECT_FALSE(keys.consumes(repeat(keyGrave, control)));
    EXPECT_THAT(keys.calls, ElementsAre("hotkey"));
}

TEST_F(Hotkey, ComesBeforeTheRuleForShortcuts) {
    keys.router.hotkey.character = U'k';
    keys.router.hotkey.modifiers = control | option;
    EXPECT_TRUE(keys.consumesTap(press(keyK, control | option)));
    EXPECT_FALSE(keys.consumesTap(press(keyK, control)));
    EXPECT_TRUE(keys.consumesTap(press(keyK)));
    EXPECT_THAT(keys.calls, ElementsAre("hotkey", "down k"));
}

TEST_F(Hotkey, WithoutItsModifiersTheCaretKeysAreOrdinaryKeys) {
    keys.router.hotkey.modifiers = shift;
    EXPECT_TRUE(keys.consumesTap(press(keyGrave)));
    EXPECT_TRUE(keys.consumesTap(press(keyGrave, {}, U'`')));
    EXPECT_TRUE(keys.consumesTap(press(keyGrave, shift)));
    EXPECT_THAT(keys.calls, ElementsAre("down `", "hotkey"));
}

TEST_F(Hotkey, WithAKeyCodeIsThatKeyOnly) {
    keys.router.hotkey.character = U'k';
    keys.router.hotkey.keyCode = keyIso;
    EXPECT_TRUE(keys.consumesTap(press(keyK)));
    EXPECT_TRUE(keys.consumesTap(press(keyGrave)));
    EXPECT_TRUE(keys.consumesTap(press(keyIso)));
    keys.router.layoutKind = KeyboardLayoutKind::qwerty;
    EXPECT_TRUE(keys.consumesTap(press(keyIso)));
    EXPECT_THAT(keys.calls, ElementsAre("down k", "hotkey", "hotkey"));
}

TEST_F(Hotkey, IsAsThePropertiesStandAtTheEvent) {
    keys.router.hotkey.character = U'a';
    EXPECT_TRUE(keys.consumesTap(press(keyA)));
    keys.router.hotkey.character = U'k';
    EXPECT_TRUE(keys.consumesTap(press(keyA)));
    EXPECT_THAT(keys.calls, ElementsAre("hotkey", "down a"));
    EXPECT_TRUE(keys.router.isToggleHotkey(press(keyK)));
    EXPECT_FALSE(keys.router.isToggleHotkey(press(keyK, shift)));
}

struct TextCase {
    KeyEvent event;
    std::optional<Character> text;
};

class HotkeyString : public testing::TestWithParam<TextCase> {};

TEST_P(HotkeyString, NamesTheKey) {
    const KeyEventRouter router;
    EXPECT_EQ(router.hotkeyString(GetParam().event), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Keys, HotkeyString,
                         testing::Values(TextCase{press(keyIso, {}, U'<'), U'^'},
                                         TextCase{press(keyGrave, {}, U'`'), U'^'},
                                         TextCase{press(keyGrave), U'^'},
                                         TextCase{press(keyA, {}, U'q'), U'a'},
                                         TextCase{press(41), U'\u00F6'}, TextCase{press(42, {}, U'#'), U'#'},
                                         TextCase{press(36), std::nullopt}));

class Recording : public testing::Test {
protected:
    Recording() { keys.router.isRecordingHotkey = true; }

    RecordingRouter keys;
};

TEST_F(Recording, TakesAnyKeyWithAnyModifiers) {
    EXPECT_TRUE(keys.consumesTap(press(keyK)));
    EXPECT_TRUE(keys.consumesTap(press(keyK, HotkeyModifiers(15))));
    EXPECT_TRUE(keys.consumesTap(press(keyIso, control)));
    EXPECT_TRUE(keys.consumesTap(press(42, option, U'#')));
    EXPECT_THAT(keys.calls,
                ElementsAre("recorded k 40 0", "recorded k 40 15", "recorded ^ 10 2", "recorded # 42 4"));
}

TEST_F(Recording, ComesBeforeTheHotkeyInForce) {
    EXPECT_TRUE(keys.consumesTap(press(keyGrave)));
    EXPECT_THAT(keys.calls, ElementsAre("recorded ^ 50 0"));
}

TEST_F(Recording, TakesTheCharacterInTheFormOfAHotkeys) {
    EXPECT_TRUE(keys.consumesTap(press(49, {}, U' ')));
    EXPECT_TRUE(keys.consumesTap(press(42, {}, U'\u00C4')));
    EXPECT_THAT(keys.calls, ElementsAre("recorded ^ 49 0", "recorded \u00E4 42 0"));
}

TEST_F(Recording, IsInterruptedByWhateverElseTakesTheKeys) {
    keys.router.interruptRecording();
    keys.router.setFocused(true);
    keys.router.setFocused(false);
    EXPECT_THAT(keys.calls, ElementsAre("interrupted", "interrupted"));
    keys.router.isRecordingHotkey = false;
    keys.router.interruptRecording();
    keys.router.setFocused(false);
    EXPECT_EQ(keys.calls.size(), 2U);
}

TEST_F(Recording, TakesAKeyThatHasNoTextToo) {
    EXPECT_TRUE(keys.consumesTap(press(36)));
    EXPECT_TRUE(keys.consumesTap(press(36, control)));
    EXPECT_THAT(keys.calls, ElementsAre("recorded ^ 36 0", "recorded ^ 36 2"));
}

TEST_F(Recording, DoesNotTakeRepeats) {
    EXPECT_TRUE(keys.consumes(repeat(keyK)));
    EXPECT_FALSE(keys.consumes(repeat(keyK, control)));
    EXPECT_THAT(keys.calls, IsEmpty());
}

TEST_F(Recording, PlaysNothingAndIsEndedByItsOwner) {
    EXPECT_TRUE(keys.consumesTap(press(keyK)));
    EXPECT_TRUE(keys.consumesTap(press(keyA)));
    EXPECT_TRUE(keys.router.isRecordingHotkey);
    EXPECT_THAT(keys.calls, ElementsAre("recorded k 40 0", "recorded a 0 0"));
}

TEST_F(Hotkey, ThatIsHeldTogglesOnce) {
    EXPECT_TRUE(keys.consumes(press(50)));
    EXPECT_TRUE(keys.consumes(press(50)));
    EXPECT_THAT(keys.calls, ElementsAre("hotkey"));
}

TEST_F(Recording, OfAKeyThatIsHeldIsOne) {
    EXPECT_TRUE(keys.consumes(press(keyK)));
    EXPECT_TRUE(keys.consumes(press(keyK)));
    EXPECT_THAT(keys.calls, ElementsAre("recorded k 40 0"));
}

} // namespace
} // namespace tavro
