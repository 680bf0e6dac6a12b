#include "Performance/GlobalKeyboardFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Event = KeyboardTap::Event;

class GlobalKeyboard : public GlobalKeyboardFixture {};

TEST_F(GlobalKeyboard, isOffAtFirst) {
    EXPECT_FALSE(controller->isEnabled());
    EXPECT_FALSE(controller->isAvailable());
    EXPECT_EQ(status(), "Global Play off");
    EXPECT_EQ(controller->hotkey(), ToggleHotkey());
    EXPECT_THAT(tap.calls, IsEmpty());
}

TEST_F(GlobalKeyboard, makesTheTapOnce) {
    controller->start();
    EXPECT_THAT(takeCalls(), ElementsAre(Call::isTrustedWithPrompt, Call::create, Call::enable));
    EXPECT_TRUE(controller->isAvailable());
    EXPECT_FALSE(controller->isEnabled());
    EXPECT_EQ(status(), "Global Play ready");
    controller->start();
    EXPECT_THAT(takeCalls(), IsEmpty());
}

TEST_F(GlobalKeyboard, stopsAndForgetsTheTap) {
    controller->setEnabled(true);
    takeCalls();
    takeHappened();
    controller->stop();
    EXPECT_THAT(takeCalls(), ElementsAre(Call::disable, Call::dispose));
    EXPECT_THAT(takeHappened(), ElementsAre("off"));
    EXPECT_FALSE(controller->isAvailable());
    EXPECT_EQ(status(), "Global Play off");
    controller->start();
    EXPECT_EQ(status(), "Global Play ready");
}

TEST_F(GlobalKeyboard, disposesTheTapWhenItGoes) {
    controller->start();
    takeCalls();
    controller.reset();
    EXPECT_THAT(takeCalls(), ElementsAre(Call::disable, Call::dispose));
}

TEST_F(GlobalKeyboard, withoutTrustStaysOffAndSaysWhy) {
    tap.answersTrusted = false;
    tap.advice = "Ask the owner.";
    controller->setEnabled(true);
    EXPECT_FALSE(controller->isEnabled());
    EXPECT_FALSE(controller->isAvailable());
    EXPECT_EQ(status(), "Allow Accessibility for Global Play");
    EXPECT_EQ(controller->adviceText().toStdString(), "Ask the owner.");
    EXPECT_THAT(takeCalls(), ElementsAre(Call::isTrustedWithPrompt));
    EXPECT_THAT(takeHappened(), IsEmpty());

    tap.answersTrusted = true;
    controller->setEnabled(true);
    EXPECT_TRUE(controller->isEnabled());
    EXPECT_EQ(status(), "Global Play on");
    EXPECT_EQ(controller->adviceText().toStdString(), "");
}

TEST_F(GlobalKeyboard, withoutATapStaysOffAndSaysWhy) {
    tap.answersCreated = false;
    controller->setEnabled(true);
    EXPECT_FALSE(controller->isEnabled());
    EXPECT_FALSE(controller->isAvailable());
    EXPECT_EQ(status(), "Global Play unavailable");
    EXPECT_EQ(controller->adviceText().toStdString(), "");
}

TEST_F(GlobalKeyboard, turningOffSilencesFirst) {
    controller->setEnabled(true);
    EXPECT_EQ(status(), "Global Play on");
    controller->setEnabled(false);
    EXPECT_EQ(status(), "Global Play ready");
    EXPECT_THAT(takeHappened(), ElementsAre("on", "panic while on", "off"));
    EXPECT_TRUE(controller->isAvailable());
    controller->setEnabled(false);
    EXPECT_THAT(takeHappened(), IsEmpty());
}

TEST_F(GlobalKeyboard, playsOnTheMainThreadAndNotInsideTheTap) {
    controller->setEnabled(true);
    takeHappened();
    EXPECT_EQ(down(keyA), Verdict::swallow);
    EXPECT_EQ(up(keyA), Verdict::swallow);
    EXPECT_THAT(happened, IsEmpty());
    mainActor.runDue();
    EXPECT_THAT(takeHappened(), ElementsAre("down a", "up a"));
}

TEST_F(GlobalKeyboard, followsTheHotkeyOnAndOff) {
    controller->start();
    EXPECT_EQ(down(keyGrave), Verdict::swallow);
    EXPECT_FALSE(controller->isEnabled());
    mainActor.runDue();
    EXPECT_TRUE(controller->isEnabled());
    EXPECT_EQ(status(), "Global Play on");
    down(keyA);
    EXPECT_EQ(down(keyGrave), Verdict::swallow);
    mainActor.runDue();
    EXPECT_EQ(status(), "Global Play ready");
    EXPECT_THAT(takeHappened(), ElementsAre("on", "down a", "panic while on", "off"));
}

TEST_F(GlobalKeyboard, keepsTheOrderOfKeysAndHotkeysThatComeAtOnce) {
    controller->start();
    down(keyGrave);
    EXPECT_EQ(down(keyA), Verdict::swallow);
    down(keyGrave);
    EXPECT_EQ(down(keyS), Verdict::pass);
    down(keyGrave);
    EXPECT_EQ(down(keyS), Verdict::swallow);
    mainActor.runDue();
    EXPECT_THAT(takeHappened(), ElementsAre("on", "down a", "panic while on", "off", "on", "down s"));
}

TEST_F(GlobalKeyboard, playsNothingThatComesTooLate) {
    controller->setEnabled(true);
    takeHappened();
    down(keyA);
    // The window's switch is quicker than the key on its way.
    controller->setEnabled(false);
    mainActor.runDue();
    EXPECT_THAT(takeHappened(), ElementsAre("panic while on", "off"));
}

TEST_F(GlobalKeyboard, catchesUpWithWhatTheTapHasToldOnce) {
    controller->start();
    down(keyGrave);
    down(keyA);
    controller->catchUp();
    EXPECT_THAT(takeHappened(), ElementsAre("on", "down a"));
    down(keyS);
    mainActor.runDue();
    controller->catchUp();
    EXPECT_THAT(takeHappened(), ElementsAre("down s"));
}

TEST_F(GlobalKeyboard, theLatestWishHolds) {
    controller->setEnabled(true);
    down(keyGrave);
    controller->setEnabled(true);
    mainActor.runDue();
    EXPECT_TRUE(controller->isEnabled());
    EXPECT_EQ(down(keyA), Verdict::swallow);
}

TEST_F(GlobalKeyboard, leavesTheKeysToTheWindowInFront) {
    controller->setEnabled(true);
    takeCalls();
    controller->setApplicationActive(true);
    EXPECT_THAT(takeCalls(), ElementsAre(Call::updateVerdicts));
    EXPECT_EQ(down(keyA), Verdict::pass);
    EXPECT_EQ(tap.client()->verdict({.type = Type::keyDown, .keyCode = keyA}), Verdict::pass);
    controller->setApplicationActive(false);
    EXPECT_EQ(tap.client()->verdict({.type = Type::keyDown, .keyCode = keyA}), Verdict::swallow);
}

TEST_F(GlobalKeyboard, tellsTheTapWheneverVerdictsChange) {
    controller->setEnabled(true);
    EXPECT_EQ(tap.calls.back(), Call::updateVerdicts);
    takeCalls();
    controller->setLayoutKind(KeyboardLayoutKind::qwerty);
    EXPECT_THAT(takeCalls(), ElementsAre(Call::updateVerdicts));
    controller->setHotkey({U'k', std::nullopt, HotkeyModifiers::control});
    EXPECT_THAT(takeCalls(), ElementsAre(Call::updateVerdicts));
    EXPECT_EQ(down(keyGrave), Verdict::pass);
    EXPECT_EQ(down(40, HotkeyModifiers::control), Verdict::swallow);
    mainActor.runDue();
    EXPECT_EQ(takeCalls().back(), Call::updateVerdicts);
}

TEST_F(GlobalKeyboard, anotherHotkeyForgetsTheHeldKeys) {
    controller->setEnabled(true);
    down(keyA);
    controller->setHotkey({U'k', std::nullopt, {}});
    down(keyA);
    mainActor.runDue();
    EXPECT_THAT(takeHappened(), ElementsAre("on", "down a", "down a"));
}

TEST_F(GlobalKeyboard, switchesATapOnAgainThatTheSystemSwitchedOff) {
    controller->start();
    takeCalls();
    EXPECT_EQ(tap.client()->handle({.type = Type::disabledByTimeout}), Verdict::pass);
    EXPECT_THAT(takeCalls(), IsEmpty());
    mainActor.runDue();
    EXPECT_THAT(takeCalls(), ElementsAre(Call::enable));
    tap.client()->handle({.type = Type::disabledByUserInput});
    controller->stop();
    takeCalls();
    mainActor.runDue();
    EXPECT_THAT(takeCalls(), IsEmpty());
}

TEST_F(GlobalKeyboard, namesTheKeysThatAnotherProgramHas) {
    controller->setEnabled(true);
    const auto press = [](std::int64_t key, HotkeyModifiers modifiers = {}) {
        return Event{.type = Type::keyDown, .keyCode = key, .modifiers = modifiers};
    };
    tap.client()->reportTaken({press(keyA), press(keyA, HotkeyModifiers::shift), press(41), press(keyGrave)});
    mainActor.runDue();
    EXPECT_EQ(status(), "Global Play on - taken by another program: a, ö, the hotkey");
    controller->setLayoutKind(KeyboardLayoutKind::qwerty);
    EXPECT_EQ(status(), "Global Play on - taken by another program: a, ;, the hotkey");
    tap.client()->reportTaken({});
    mainActor.runDue();
    EXPECT_EQ(status(), "Global Play on");
}

TEST_F(GlobalKeyboard, theEmergencyExitEndsTheCapture) {
    controller->setEnabled(true);
    takeHappened();
    tap.client()->tapEnded(KeyboardTap::End::emergencyExit);
    EXPECT_THAT(takeHappened(), IsEmpty());
    mainActor.runDue();
    EXPECT_THAT(takeHappened(), ElementsAre("panic while on", "off"));
    EXPECT_FALSE(controller->isAvailable());
    EXPECT_EQ(status(), "Global Play off");
    EXPECT_EQ(tap.client(), nullptr);
    controller->setEnabled(true);
    EXPECT_EQ(status(), "Global Play on");
}

TEST_F(GlobalKeyboard, aLostTapIsUnavailable) {
    controller->start();
    tap.answersCreated = false;
    tap.client()->tapEnded(KeyboardTap::End::lost);
    mainActor.runDue();
    EXPECT_THAT(takeHappened(), IsEmpty());
    EXPECT_FALSE(controller->isAvailable());
    EXPECT_EQ(status(), "Global Play unavailable");
}

TEST_F(GlobalKeyboard, aLostTapIsMadeAnewAndWhatSoundedIsSilenced) {
    controller->setEnabled(true);
    // Who has lost its connection believes that others have the keys.
    tap.client()->reportTaken({{.type = Type::keyDown, .keyCode = keyA}});
    down(keyA);
    mainActor.runDue();
    takeHappened();
    tap.client()->tapEnded(KeyboardTap::End::lost);
    mainActor.runDue();
    EXPECT_THAT(takeHappened(), ElementsAre("panic while on"));
    EXPECT_TRUE(controller->isEnabled());
    EXPECT_TRUE(tap.isEnabled());
    EXPECT_EQ(status(), "Global Play on");
    // The release has gone by; the next press is one.
    down(keyA);
    mainActor.runDue();
    EXPECT_THAT(takeHappened(), ElementsAre("down a"));
}

TEST_F(GlobalKeyboard, whatIsOnItsWayFindsItGone) {
    controller->setEnabled(true);
    takeHappened();
    down(keyA);
    controller.reset();
    mainActor.runDue();
    EXPECT_THAT(happened, ElementsAre("off"));
}

} // namespace
} // namespace tavro
