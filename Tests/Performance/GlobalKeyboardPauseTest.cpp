#include "Performance/GlobalKeyboardFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Pause = GlobalKeyboardController::Pause;

class GlobalKeyboardPause : public GlobalKeyboardFixture {};

TEST_F(GlobalKeyboardPause, aPauseSilencesAndGivesTheKeysBack) {
    controller->setEnabled(true);
    down(keyA);
    mainActor.runDue();
    takeCalls();
    takeHappened();
    controller->pause(Pause::session);
    EXPECT_FALSE(tap.isEnabled());
    EXPECT_TRUE(controller->isEnabled());
    EXPECT_TRUE(controller->isPaused());
    EXPECT_THAT(takeHappened(), ElementsAre("panic while on"));
    EXPECT_EQ(status(), "Global Play paused: session locked or not in front");
    EXPECT_EQ(tap.client()->verdict({.type = Type::keyDown, .keyCode = keyA}), Verdict::pass);
    EXPECT_EQ(tap.client()->verdict({.type = Type::keyDown, .keyCode = keyGrave}), Verdict::pass);

    controller->resume(Pause::session);
    EXPECT_TRUE(tap.isEnabled());
    EXPECT_FALSE(controller->isPaused());
    EXPECT_EQ(status(), "Global Play on");
    EXPECT_THAT(takeHappened(), IsEmpty());
    // The key that was held is forgotten, so that its next press is one.
    EXPECT_EQ(down(keyA), Verdict::swallow);
    mainActor.runDue();
    EXPECT_THAT(takeHappened(), ElementsAre("down a"));
}

TEST_F(GlobalKeyboardPause, aPauseLastsUntilItsLastReasonIsGone) {
    controller->setEnabled(true);
    takeHappened();
    controller->pause(Pause::processStop);
    EXPECT_EQ(status(), "Global Play paused: program stopped");
    controller->pause(Pause::session);
    controller->pause(Pause::session);
    EXPECT_EQ(status(), "Global Play paused: session locked or not in front");
    EXPECT_THAT(takeHappened(), ElementsAre("panic while on"));
    controller->resume(Pause::session);
    EXPECT_FALSE(tap.isEnabled());
    EXPECT_EQ(status(), "Global Play paused: program stopped");
    controller->resume(Pause::session);
    EXPECT_FALSE(tap.isEnabled());
    controller->resume(Pause::processStop);
    EXPECT_TRUE(tap.isEnabled());
    EXPECT_EQ(status(), "Global Play on");
    EXPECT_THAT(takeHappened(), IsEmpty());
}

TEST_F(GlobalKeyboardPause, aPauseOfASilentTapOnlySwitchesItOff) {
    controller->start();
    controller->pause(Pause::session);
    EXPECT_FALSE(tap.isEnabled());
    EXPECT_THAT(takeHappened(), IsEmpty());
    EXPECT_EQ(status(), "Global Play paused: session locked or not in front");
    controller->resume(Pause::session);
    EXPECT_TRUE(tap.isEnabled());
    EXPECT_EQ(status(), "Global Play ready");
}

TEST_F(GlobalKeyboardPause, isTurnedOnAndOffWhilePausedAndTakesNothing) {
    controller->pause(Pause::session);
    EXPECT_EQ(status(), "Global Play off");
    EXPECT_THAT(tap.calls, IsEmpty());
    controller->setEnabled(true);
    EXPECT_TRUE(controller->isEnabled());
    EXPECT_TRUE(controller->isAvailable());
    EXPECT_FALSE(tap.isEnabled());
    EXPECT_EQ(status(), "Global Play paused: session locked or not in front");
    EXPECT_EQ(down(keyA), Verdict::pass);
    EXPECT_EQ(down(keyGrave), Verdict::pass);
    // The system switching the tap off is no reason to switch it on now.
    tap.client()->handle({.type = Type::disabledByTimeout});
    mainActor.runDue();
    EXPECT_FALSE(tap.isEnabled());
    EXPECT_THAT(takeHappened(), ElementsAre("on"));

    controller->setEnabled(false);
    EXPECT_FALSE(controller->isEnabled());
    controller->setEnabled(true);
    takeHappened();
    controller->resume(Pause::session);
    EXPECT_TRUE(tap.isEnabled());
    EXPECT_EQ(status(), "Global Play on");
    EXPECT_EQ(down(keyA), Verdict::swallow);
    mainActor.runDue();
    EXPECT_THAT(takeHappened(), ElementsAre("down a"));
}

TEST_F(GlobalKeyboardPause, aPauseIsNotOvertakenByKeysOnTheirWay) {
    controller->start();
    down(keyGrave);
    down(keyA);
    controller->pause(Pause::session);
    EXPECT_TRUE(controller->isEnabled());
    mainActor.runDue();
    EXPECT_TRUE(controller->isEnabled());
    EXPECT_THAT(takeHappened(), ElementsAre("on"));
    controller->resume(Pause::session);
    EXPECT_EQ(status(), "Global Play on");

    down(keyGrave);
    controller->pause(Pause::session);
    EXPECT_THAT(takeHappened(), ElementsAre("panic while on", "off"));
    mainActor.runDue();
    EXPECT_FALSE(controller->isEnabled());
}

TEST_F(GlobalKeyboardPause, aPauseEndsWhatTheTapLetsGoOf) {
    controller->setEnabled(true);
    keys->press({.keyCode = keyA, .road = PressedKeys::Road::window, .character = U'a'});
    controller->pause(Pause::session);
    // Switched off, the tap tells the releases that it will not see.
    EXPECT_EQ(up(keyA), Verdict::pass);
    EXPECT_FALSE(keys->isDown(keyA));
    // And nobody watches the keys of the windows until it is over.
    keys->press({.keyCode = keyS, .road = PressedKeys::Road::window, .character = U's'});
    keys->loseKeyboard();
    EXPECT_FALSE(keys->isDown(keyS));
    controller->resume(Pause::session);
    keys->press({.keyCode = keyS, .road = PressedKeys::Road::window, .character = U's'});
    keys->loseKeyboard();
    EXPECT_TRUE(keys->isDown(keyS));
}

TEST_F(GlobalKeyboardPause, saysWhyThereIsNoTapWhilePausedToo) {
    tap.answersTrusted = false;
    controller->pause(Pause::session);
    controller->setEnabled(true);
    EXPECT_EQ(status(), "Allow Accessibility for Global Play");
    tap.answersTrusted = true;
    controller->setEnabled(true);
    tap.answersCreated = false;
    tap.client()->tapEnded(KeyboardTap::End::lost);
    mainActor.runDue();
    EXPECT_EQ(status(), "Global Play unavailable");
    controller->resume(Pause::session);
    EXPECT_EQ(status(), "Global Play unavailable");
    EXPECT_FALSE(tap.isEnabled());
}

TEST_F(GlobalKeyboardPause, namesNoTakenKeysWhilePaused) {
    controller->setEnabled(true);
    tap.client()->reportTaken({{.type = Type::keyDown, .keyCode = keyA}});
    mainActor.runDue();
    controller->pause(Pause::session);
    EXPECT_EQ(status(), "Global Play paused: session locked or not in front");
    controller->resume(Pause::session);
    EXPECT_EQ(status(), "Global Play on - taken by another program: a");
}

} // namespace
} // namespace tavro
