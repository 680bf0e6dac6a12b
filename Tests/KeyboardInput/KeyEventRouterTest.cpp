#include "KeyboardInput/RecordingRouter.h"

#include <gmock/gmock.h>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto command = HotkeyModifiers::command;
constexpr auto control = HotkeyModifiers::control;
constexpr auto option = HotkeyModifiers::option;
constexpr auto shift = HotkeyModifiers::shift;

constexpr std::int64_t keyA = 0;
constexpr std::int64_t keyY = 16;
constexpr std::int64_t keyReturn = 36;

class Playing : public testing::Test {
protected:
    RecordingRouter keys;
};

TEST_F(Playing, StartsWithTheCaretHotkeyAndTheFirstLayout) {
    const KeyEventRouter router;
    EXPECT_EQ(router.hotkey, ToggleHotkey());
    EXPECT_EQ(router.layoutKind, KeyboardLayoutKind::qwertz);
    EXPECT_FALSE(router.isRecordingHotkey);
}

TEST_F(Playing, AHeldKeyGivesOnePressAndOneRelease) {
    EXPECT_TRUE(keys.consumes(press(keyA)));
    EXPECT_TRUE(keys.consumes(repeat(keyA)));
    EXPECT_TRUE(keys.consumes(repeat(keyA)));
    EXPECT_TRUE(keys.consumes(release(keyA)));
    EXPECT_THAT(keys.calls, ElementsAre("down a", "up a"));
}

TEST_F(Playing, APressOfAKeyThatIsDownIsARepeatWithoutAMarkToo) {
    EXPECT_TRUE(keys.consumes(press(keyA)));
    EXPECT_TRUE(keys.consumes(press(keyA)));
    EXPECT_TRUE(keys.consumes(release(keyA)));
    EXPECT_TRUE(keys.consumes(press(keyA)));
    EXPECT_THAT(keys.calls, ElementsAre("down a", "up a", "down a"));
}

TEST_F(Playing, AKeyWhoseReleaseWasNotSeenPlaysAgain) {
    EXPECT_TRUE(keys.consumes(press(keyA)));
    keys.router.setFocused(false);
    EXPECT_TRUE(keys.consumes(press(keyA)));
    EXPECT_THAT(keys.calls, ElementsAre("down a", "down a"));
}

TEST_F(Playing, LosingTheKeyboardIsTold) {
    keys.router.onFocusChanged = [this](bool isFocused) {
        keys.calls.emplace_back(isFocused ? "focus" : "no focus");
    };
    keys.router.setFocused(true);
    keys.router.setFocused(false);
    EXPECT_THAT(keys.calls, ElementsAre("focus", "no focus"));
}

TEST_F(Playing, ThePositionDecidesNotWhatIsTyped) {
    EXPECT_TRUE(keys.consumesTap(press(keyA, {}, U'\u0444')));
    EXPECT_TRUE(keys.consumesTap(press(keyY, {}, U'y')));
    keys.router.layoutKind = KeyboardLayoutKind::qwerty;
    EXPECT_TRUE(keys.consumesTap(press(keyY, {}, U'z')));
    EXPECT_THAT(keys.calls, ElementsAre("down a", "down z", "down y"));
}

TEST_F(Playing, ShiftPlaysLikeNothingHeld) {
    EXPECT_TRUE(keys.consumes(press(keyA, shift, U'A')));
    EXPECT_TRUE(keys.consumes(release(keyA, shift, U'A')));
    EXPECT_THAT(keys.calls, ElementsAre("down a", "up a"));
}

TEST_F(Playing, AKeyWithoutAPlaceIsWhatItTypes) {
    EXPECT_TRUE(keys.consumes(press(42, {}, U'#')));
    EXPECT_TRUE(keys.consumes(release(42, {}, U'#')));
    EXPECT_THAT(keys.calls, ElementsAre("down #", "up #"));
    EXPECT_EQ(keys.router.playableCharacter(press(42, {}, U'#')), U'#');
    EXPECT_EQ(keys.router.playableCharacter(press(keyA, {}, U'#')), U'a');
    EXPECT_EQ(keys.router.playableCharacter(press(keyReturn)), std::nullopt);
}

TEST_F(Playing, AKeyWithoutACharacterIsSwallowed) {
    EXPECT_TRUE(keys.consumes(press(keyReturn)));
    EXPECT_TRUE(keys.consumes(release(keyReturn)));
    EXPECT_THAT(keys.calls, IsEmpty());
}

class Shortcut : public testing::TestWithParam<HotkeyModifiers> {};

TEST_P(Shortcut, PassesAndPlaysNothing) {
    RecordingRouter keys;
    EXPECT_FALSE(keys.consumes(press(keyA, GetParam())));
    EXPECT_FALSE(keys.consumes(repeat(keyA, GetParam())));
    EXPECT_FALSE(keys.consumes(release(keyA, GetParam())));
    EXPECT_FALSE(keys.consumesTap(press(keyReturn, GetParam())));
    EXPECT_THAT(keys.calls, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Modifiers, Shortcut,
                         testing::Values(command, control, option, command | shift, control | option,
                                         command | control | option | shift));

struct ElsewhereCase {
    bool isForeignWindow;
    bool isEditingText;
};

class Elsewhere : public testing::TestWithParam<ElsewhereCase> {};

TEST_P(Elsewhere, EveryKeyPassesAndPlaysNothing) {
    RecordingRouter keys;
    const KeyEventRouter::Context context{GetParam().isForeignWindow, GetParam().isEditingText};
    EXPECT_FALSE(keys.consumes(press(keyA), context));
    EXPECT_FALSE(keys.consumes(repeat(keyA), context));
    EXPECT_FALSE(keys.consumes(release(keyA), context));
    EXPECT_FALSE(keys.consumesTap(press(50), context));
    keys.router.isRecordingHotkey = true;
    EXPECT_FALSE(keys.consumesTap(press(keyA), context));
    EXPECT_THAT(keys.calls, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Contexts, Elsewhere,
                         testing::Values(ElsewhereCase{true, false}, ElsewhereCase{false, true},
                                         ElsewhereCase{true, true}));

TEST_F(Playing, UnsetActionsAreSkipped) {
    KeyEventRouter router;
    using Verdict = KeyEventRouter::Verdict;
    EXPECT_EQ(router.handle(press(keyA), {}), Verdict::consume);
    EXPECT_EQ(router.handle(release(keyA), {}), Verdict::consume);
    EXPECT_EQ(router.handle(press(50), {}), Verdict::consume);
    router.isRecordingHotkey = true;
    EXPECT_EQ(router.handle(press(keyA), {}), Verdict::consume);
}

TEST_F(Playing, AskingForTheVerdictPlaysNothing) {
    EXPECT_EQ(keys.router.verdict(press(keyA), {}), KeyEventRouter::Verdict::consume);
    EXPECT_EQ(keys.router.verdict(press(50), {}), KeyEventRouter::Verdict::consume);
    EXPECT_THAT(keys.calls, IsEmpty());
    EXPECT_FALSE(keys.consumes(release(keyA, control)));
    EXPECT_THAT(keys.calls, IsEmpty());
}

} // namespace
} // namespace tavro
