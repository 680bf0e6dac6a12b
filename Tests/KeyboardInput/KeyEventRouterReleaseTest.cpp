#include "KeyboardInput/RecordingRouter.h"

#include <gmock/gmock.h>

namespace tavro {
namespace {

using testing::ElementsAre;

constexpr std::int64_t keyA = 0;
constexpr std::int64_t keyY = 16;

/// Whatever happens between a press that was played and its release, the note must end.
class Release : public testing::Test {
protected:
    RecordingRouter keys;
};

TEST_F(Release, IsPlayedEvenWhenAShortcutModifierIsHeldByThen) {
    EXPECT_TRUE(keys.consumes(press(keyA)));
    EXPECT_FALSE(keys.consumes(release(keyA, HotkeyModifiers::option)));
    EXPECT_THAT(keys.calls, ElementsAre("down a", "up a"));
}

TEST_F(Release, IsPlayedEvenWhenATextFieldHasTheKeyboardByThen) {
    EXPECT_TRUE(keys.consumes(press(keyA)));
    EXPECT_FALSE(keys.consumes(release(keyA), {false, true}));
    EXPECT_THAT(keys.calls, ElementsAre("down a", "up a"));
}

TEST_F(Release, IsPlayedEvenWhenItGoesToAnotherWindow) {
    EXPECT_TRUE(keys.consumes(press(keyA)));
    EXPECT_FALSE(keys.consumes(release(keyA), {true, false}));
    EXPECT_THAT(keys.calls, ElementsAre("down a", "up a"));
}

TEST_F(Release, IsThatOfTheCharacterPressedEvenOnAnotherLayoutByThen) {
    EXPECT_TRUE(keys.consumes(press(keyY)));
    keys.router.layoutKind = KeyboardLayoutKind::qwerty;
    EXPECT_TRUE(keys.consumes(release(keyY)));
    EXPECT_THAT(keys.calls, ElementsAre("down z", "up z"));
}

TEST_F(Release, IsThatOfTheCharacterPressedEvenWhenItTypesAnotherByThen) {
    EXPECT_TRUE(keys.consumes(press(42, {}, U'#')));
    EXPECT_TRUE(keys.consumes(release(42, {}, U'\'')));
    EXPECT_TRUE(keys.consumes(press(42, {}, U'#')));
    EXPECT_TRUE(keys.consumes(release(42)));
    EXPECT_THAT(keys.calls, ElementsAre("down #", "up #", "down #", "up #"));
}

TEST_F(Release, IsPlayedOnce) {
    EXPECT_TRUE(keys.consumes(press(keyA)));
    EXPECT_FALSE(keys.consumes(release(keyA, HotkeyModifiers::control)));
    EXPECT_FALSE(keys.consumes(release(keyA, HotkeyModifiers::control)));
    EXPECT_THAT(keys.calls, ElementsAre("down a", "up a"));
}

TEST_F(Release, OfAKeyThatWasNotSeenGoingDownIsPlayed) {
    EXPECT_TRUE(keys.consumes(release(keyA)));
    EXPECT_THAT(keys.calls, ElementsAre("up a"));
}

TEST_F(Release, OfAForgottenKeyFollowsTheOrdinaryRules) {
    EXPECT_TRUE(keys.consumes(press(keyA)));
    EXPECT_TRUE(keys.consumes(press(keyY)));
    keys.router.setFocused(false);
    EXPECT_FALSE(keys.consumes(release(keyA, HotkeyModifiers::option)));
    EXPECT_TRUE(keys.consumes(release(keyY)));
    EXPECT_THAT(keys.calls, ElementsAre("down a", "down z", "up z"));
}

TEST_F(Release, DoesNotAskForTheHotkeyOrTheRecording) {
    keys.router.hotkey.character = U'a';
    EXPECT_TRUE(keys.consumes(release(keyA)));
    keys.router.isRecordingHotkey = true;
    EXPECT_TRUE(keys.consumes(release(keyA)));
    EXPECT_THAT(keys.calls, ElementsAre("up a", "up a"));
}

TEST_F(Release, AnAutorepeatFlagMakesNoDifference) {
    auto flagged = release(keyA);
    flagged.isAutorepeat = true;
    EXPECT_TRUE(keys.consumes(press(keyA)));
    EXPECT_TRUE(keys.consumes(flagged));
    EXPECT_THAT(keys.calls, ElementsAre("down a", "up a"));
}

TEST_F(Release, OfKeysHeldTogetherAreToldApart) {
    EXPECT_TRUE(keys.consumes(press(keyA)));
    EXPECT_TRUE(keys.consumes(press(keyY)));
    EXPECT_FALSE(keys.consumes(release(keyY, HotkeyModifiers::command)));
    EXPECT_TRUE(keys.consumes(release(keyA)));
    EXPECT_THAT(keys.calls, ElementsAre("down a", "down z", "up z", "up a"));
}

} // namespace
} // namespace tavro
