#include "KeyboardInput/PressedKeys.h"

#include "KeyboardInput/GlobalKeyRules.h"
#include "KeyboardInput/RecordingRouter.h"

#include <gmock/gmock.h>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Road = PressedKeys::Road;
using Witness = PressedKeys::Witness;

constexpr std::int64_t keyA = 0;
constexpr std::int64_t keyS = 1;
constexpr std::int64_t keyCaret = 50;

class PressedKeysTest : public testing::Test {
protected:
    PressedKeys::Serial press(Road road, std::uint32_t time = 0, std::optional<Character> character = U'a') {
        return keys.press({.keyCode = keyA, .road = road, .character = character, .time = time}).serial;
    }

    std::optional<Character> release(Witness witness, std::uint32_t time = 0) {
        return keys.release(keyA, witness, time).character;
    }

    PressedKeys keys;
};

TEST_F(PressedKeysTest, WhoeverSeesTheReleaseEndsTheKeyOnce) {
    for (const auto first : {Witness::window, Witness::windowSystem, Witness::tap}) {
        for (const auto second : {Witness::window, Witness::windowSystem, Witness::tap}) {
            press(Road::window);
            EXPECT_EQ(release(first), U'a');
            EXPECT_FALSE(keys.isDown(keyA));
            EXPECT_EQ(release(second), std::nullopt);
        }
    }
}

TEST_F(PressedKeysTest, AWindowLearnsThatItsReleaseHasBeenSeen) {
    press(Road::window);
    release(Witness::windowSystem);
    EXPECT_TRUE(keys.release(keyA, Witness::window).isKnown);
    EXPECT_FALSE(keys.release(keyA, Witness::window).isKnown);
    press(Road::window);
    release(Witness::tap);
    press(Road::tap);
    release(Witness::tap);
    EXPECT_FALSE(keys.release(keyA, Witness::window).isKnown);
}

TEST_F(PressedKeysTest, TheTapsKeyIsEndedByOthersOnlyOnceItSounds) {
    const auto serial = press(Road::tap);
    EXPECT_EQ(release(Witness::window), std::nullopt);
    EXPECT_TRUE(keys.isDown(keyA));
    keys.markPlayed(keyA, serial);
    EXPECT_EQ(release(Witness::window), U'a');
    EXPECT_EQ(release(Witness::tap), std::nullopt);
}

TEST_F(PressedKeysTest, ALateReleaseDoesNotEndTheNextPress) {
    const auto serial = press(Road::tap, 20);
    keys.markPlayed(keyA, serial);
    EXPECT_EQ(release(Witness::windowSystem, 10), std::nullopt);
    EXPECT_EQ(release(Witness::windowSystem, 20), std::nullopt);
    EXPECT_EQ(release(Witness::windowSystem, 21), U'a');
    // The clock runs over.
    keys.markPlayed(keyA, press(Road::tap, 0xFFFFFFF0));
    EXPECT_EQ(release(Witness::windowSystem, 0xFFFFFF00), std::nullopt);
    EXPECT_EQ(release(Witness::windowSystem, 5), U'a');
}

TEST_F(PressedKeysTest, AWindowsKeyThatTheTapSeesGoingUpIsUpAtOnceAndEndedOnce) {
    press(Road::window);
    EXPECT_TRUE(keys.releaseLater(keyA, 0));
    EXPECT_FALSE(keys.isDown(keyA));
    EXPECT_FALSE(keys.releaseLater(keyA, 0));
    // Its next press, before the windows' thread has heard of the release, ends nothing of itself.
    press(Road::tap);
    EXPECT_EQ(keys.finish(keyA), U'a');
    EXPECT_EQ(keys.finish(keyA), std::nullopt);
    EXPECT_TRUE(keys.isDown(keyA));
}

TEST_F(PressedKeysTest, ALaterPressTellsThatTheKeyWentUpInBetween) {
    press(Road::window, 10);
    EXPECT_FALSE(keys.releaseByNextPress(keyA, 10));
    EXPECT_FALSE(keys.releaseByNextPress(keyA, 0));
    EXPECT_TRUE(keys.releaseByNextPress(keyA, 11));
    EXPECT_EQ(keys.finish(keyA), U'a');
    press(Road::window, 0);
    EXPECT_FALSE(keys.releaseByNextPress(keyA, 11));
    press(Road::tap, 10);
    EXPECT_FALSE(keys.releaseByNextPress(keyA, 11));
}

TEST_F(PressedKeysTest, WhatIsUnfinishedIsEndedByTheFirstWhoTellsTheWindowsThread) {
    for (const auto witness : {Witness::window, Witness::windowSystem}) {
        press(Road::window);
        EXPECT_TRUE(keys.releaseLater(keyA, 0));
        EXPECT_EQ(release(Witness::tap), std::nullopt);
        EXPECT_EQ(release(witness), U'a');
        EXPECT_EQ(keys.finish(keyA), std::nullopt);
    }
}

TEST_F(PressedKeysTest, TheTapTakesNoLateReleaseForThatOfTheNextPress) {
    press(Road::window, 20);
    EXPECT_FALSE(keys.releaseLater(keyA, 10));
    EXPECT_TRUE(keys.isDown(keyA));
    EXPECT_TRUE(keys.releaseLater(keyA, 21));
    press(Road::tap);
    EXPECT_FALSE(keys.releaseLater(keyA, 30));
}

TEST_F(PressedKeysTest, WhatIsUnfinishedIsForgottenWithTheWindowsKeys) {
    press(Road::window);
    keys.releaseLater(keyA, 0);
    keys.forget(Road::window);
    EXPECT_EQ(keys.finish(keyA), std::nullopt);
}

TEST_F(PressedKeysTest, APressThatComesBehindItsReleaseIsOver) {
    keys.releaseAhead(keyA, 10);
    EXPECT_TRUE(keys.startsPress(keyA, 9));
    const auto pressed = keys.press({.keyCode = keyA, .road = Road::window, .character = U'a', .time = 9});
    EXPECT_TRUE(pressed.isOver);
    EXPECT_FALSE(keys.isDown(keyA));
    // What the window is told of it later ends nothing more.
    const auto late = keys.release(keyA, Witness::window, 10);
    EXPECT_TRUE(late.isKnown);
    EXPECT_EQ(late.character, std::nullopt);
    EXPECT_FALSE(keys.press({.keyCode = keyA, .road = Road::window, .character = U'a', .time = 11}).isOver);
    EXPECT_TRUE(keys.isDown(keyA));
}

TEST_F(PressedKeysTest, ARepeatThatComesBehindTheReleaseStartsNothing) {
    for (const auto witness : {Witness::windowSystem, Witness::tap}) {
        press(Road::window, 10);
        EXPECT_FALSE(keys.startsPress(keyA, 12));
        witness == Witness::tap ? static_cast<void>(keys.releaseLater(keyA, 20))
                                : static_cast<void>(release(witness, 20));
        EXPECT_FALSE(keys.startsPress(keyA, 12));
        EXPECT_FALSE(keys.startsPress(keyA, 20));
        EXPECT_TRUE(keys.startsPress(keyA, 21));
        EXPECT_TRUE(keys.startsPress(keyS, 12));
        // Where there is no clock nothing can be told.
        EXPECT_TRUE(keys.startsPress(keyA, 0));
        keys.forget(Road::window);
        EXPECT_TRUE(keys.startsPress(keyA, 12));
    }
}

TEST_F(PressedKeysTest, ALatePressIsNoneOfTheKeysLaterOnes) {
    // Down, up, and by now down again, by another road or silently.
    for (const auto road : {Road::tap, Road::window}) {
        keys.releaseAhead(keyA, 20);
        press(road, 30, std::nullopt);
        EXPECT_TRUE(keys.startsPress(keyA, 10));
        const auto late = keys.press({.keyCode = keyA, .road = Road::window, .character = U'a', .time = 10});
        EXPECT_TRUE(late.isOver);
        EXPECT_EQ(keys.find(keyA)->time, 30U);
        // Nor does its own release end those.
        keys.release(keyA, Witness::window, 20);
        EXPECT_TRUE(keys.isDown(keyA));
        keys.forget(Road::window);
        keys.forget(Road::tap);
    }
}

TEST_F(PressedKeysTest, APressInTheWindowEndsWhatTheTapHasNotYetToldToBeOver) {
    keys.markPlayed(keyA, press(Road::tap, 10));
    // In the same millisecond, so that the tap is waited for.
    EXPECT_EQ(release(Witness::windowSystem, 10), std::nullopt);
    EXPECT_TRUE(keys.startsPress(keyA, 12));
    const auto pressed = keys.press({.keyCode = keyA, .road = Road::window, .character = U'a', .time = 12});
    EXPECT_EQ(pressed.ended, U'a');
    EXPECT_FALSE(pressed.isOver);
    EXPECT_FALSE(keys.releaseLater(keyA, 10));
    EXPECT_TRUE(keys.isDown(keyA));
}

TEST_F(PressedKeysTest, LosingTheKeyboardForgetsTheWindowsKeysUnlessSomebodyWatches) {
    press(Road::window);
    keys.setWatching(Witness::tap, true);
    keys.loseKeyboard();
    EXPECT_TRUE(keys.isDown(keyA));
    keys.setWatching(Witness::tap, false);
    keys.loseKeyboard();
    EXPECT_FALSE(keys.isDown(keyA));
    press(Road::tap);
    keys.loseKeyboard();
    EXPECT_TRUE(keys.isDown(keyA));
    keys.forget(Road::tap);
    EXPECT_FALSE(keys.isDown(keyA));
}

// Both roads over one object.

class SharedKeys : public testing::Test {
protected:
    SharedKeys() {
        rules.keys = window.router.keys;
        rules.setEnabled(true);
    }

    static KeyboardTap::Event tapped(KeyboardTap::Event::Type type, std::int64_t key,
                                     HotkeyModifiers modifiers = {}) {
        return {.type = type, .keyCode = key, .modifiers = modifiers};
    }

    RecordingRouter window;
    GlobalKeyRules rules;
};

TEST_F(SharedKeys, TheTapReportsTheReleaseOfAWindowsKeyWhateverIsHeld) {
    for (std::int64_t modifiers = 0; modifiers < 16; ++modifiers) {
        window.consumes(press(keyA));
        const auto decision =
            rules.decide(tapped(KeyboardTap::Event::Type::keyUp, keyA, HotkeyModifiers(modifiers)));
        EXPECT_EQ(decision.action, GlobalKeyRules::Action::keyUp) << modifiers;
        EXPECT_EQ(decision.character, U'a') << modifiers;
        EXPECT_TRUE(decision.isOfWindow) << modifiers;
        EXPECT_FALSE(window.router.keys->isDown(keyA)) << modifiers;
        EXPECT_EQ(window.router.keys->finish(keyA), U'a') << modifiers;
        window.consumes(release(keyA));
    }
}

TEST_F(SharedKeys, AKeyThatSoundsInTheWindowIsNoNewPressForTheTap) {
    window.consumes(press(keyA));
    EXPECT_EQ(rules.decide(tapped(KeyboardTap::Event::Type::keyDown, keyA)).action,
              GlobalKeyRules::Action::none);
}

TEST_F(SharedKeys, AKeyPressedAgainBehindItsReleaseIsNewForTheTapThatSawIt) {
    window.consumes(press(keyA));
    rules.decide(tapped(KeyboardTap::Event::Type::keyUp, keyA));
    EXPECT_EQ(rules.decide(tapped(KeyboardTap::Event::Type::keyDown, keyA)).action,
              GlobalKeyRules::Action::keyDown);
}

TEST_F(SharedKeys, AKeyPressedAgainInTheWindowEndsFirstWhatTheTapSawGoingUp) {
    window.consumes(press(keyA));
    rules.decide(tapped(KeyboardTap::Event::Type::keyUp, keyA));
    window.consumes(press(keyA));
    EXPECT_THAT(window.calls, ElementsAre("down a", "up a", "down a"));
    EXPECT_EQ(window.router.keys->finish(keyA), std::nullopt);
}

TEST_F(SharedKeys, ALaterPressIsNewForTheTapAlthoughTheWindowHasNotHeardOfTheRelease) {
    auto first = press(keyA);
    first.time = 10;
    window.consumes(first);
    auto next = tapped(KeyboardTap::Event::Type::keyDown, keyA);
    next.time = 20;
    auto again = next;
    again.isAutorepeat = true;
    EXPECT_EQ(rules.decide(again).action, GlobalKeyRules::Action::none);
    const auto decision = rules.decide(next);
    EXPECT_EQ(decision.action, GlobalKeyRules::Action::keyDown);
    EXPECT_TRUE(decision.isOfWindow);
    EXPECT_EQ(window.router.keys->finish(keyA), U'a');
}

TEST_F(SharedKeys, AKeyThatTheWindowOnlyKnowsToBeDownIsTheTaps) {
    window.router.keepSilent(keyA, 1);
    EXPECT_EQ(rules.decide(tapped(KeyboardTap::Event::Type::keyDown, keyA)).action,
              GlobalKeyRules::Action::keyDown);
}

TEST_F(SharedKeys, AKeyHeldFromElsewhereStaysSilentInTheWindowUntilItIsPressedAgain) {
    window.router.keepSilent(keyA, 1);
    EXPECT_TRUE(window.consumes(press(keyA)));
    window.router.handleReleaseElsewhere(keyA, 5);
    EXPECT_TRUE(window.consumes(release(keyA)));
    EXPECT_THAT(window.calls, IsEmpty());
    window.consumes(press(keyA));
    EXPECT_THAT(window.calls, ElementsAre("down a"));
}

TEST_F(SharedKeys, AKeyOfTheTapsIsEndedByTheTapAndItsTimeIsKnown) {
    auto typed = tapped(KeyboardTap::Event::Type::keyDown, keyA);
    typed.time = 10;
    rules.decide(typed);
    window.router.keys->markPlayed(keyA, window.router.keys->find(keyA)->serial);
    window.router.handleReleaseElsewhere(keyA, 20);
    EXPECT_THAT(window.calls, IsEmpty());
    EXPECT_TRUE(window.router.keys->isDown(keyA));
    EXPECT_TRUE(window.router.keys->startsPress(keyA, 30));
    typed.type = KeyboardTap::Event::Type::keyUp;
    typed.time = 20;
    EXPECT_EQ(rules.decide(typed).action, GlobalKeyRules::Action::keyUp);
}

TEST_F(SharedKeys, TheWindowsOwnReleaseBehindThatOfTheSystemEndsNothingMore) {
    window.consumes(press(keyA));
    window.router.handleReleaseElsewhere(keyA, 5);
    EXPECT_TRUE(window.consumes(release(keyA)));
    EXPECT_THAT(window.calls, ElementsAre("down a", "up a"));
}

TEST_F(SharedKeys, AKeyThatIsUpBeforeItsPressArrivesSoundsAndEnds) {
    auto late = press(keyA);
    late.time = 4;
    window.router.handleReleaseElsewhere(keyA, 5);
    window.consumes(late);
    EXPECT_THAT(window.calls, ElementsAre("down a", "up a"));
    auto next = press(keyA);
    next.time = 6;
    window.consumes(next);
    EXPECT_THAT(window.calls, ElementsAre("down a", "up a", "down a"));
}

TEST_F(SharedKeys, ARepeatThatItsEndHasOvertakenStartsNothing) {
    auto first = press(keyA);
    first.time = 10;
    window.consumes(first);
    window.router.handleReleaseElsewhere(keyA, 60);
    auto late = press(keyA);
    late.time = 50;
    EXPECT_TRUE(window.consumes(late));
    EXPECT_FALSE(window.router.keys->isDown(keyA));
    EXPECT_THAT(window.calls, ElementsAre("down a", "up a"));
    // The same of a key whose press is late too.
    window.router.handleReleaseElsewhere(keyA, 90);
    auto next = press(keyA);
    for (const auto time : {70U, 80U}) {
        next.time = time;
        EXPECT_TRUE(window.consumes(next));
    }
    EXPECT_THAT(window.calls, ElementsAre("down a", "up a", "down a", "up a"));
}

TEST_F(SharedKeys, APressThatTookTheLongWaySoundsAlthoughTheKeyHasBeenDownSince) {
    // The window system tells at once what it tells besides the keys, and those come behind it.
    window.router.handleReleaseElsewhere(keyA, 20);
    // Pressed again while another program had the keyboard.
    window.router.keepSilent(keyA, 21);
    window.router.handleReleaseElsewhere(keyA, 30);
    auto late = press(keyA);
    late.time = 10;
    window.consumes(late);
    auto end = release(keyA);
    end.time = 20;
    window.consumes(end);
    EXPECT_THAT(window.calls, ElementsAre("down a", "up a"));
    // The same while it is still held.
    window.calls.clear();
    window.router.handleReleaseElsewhere(keyA, 50);
    window.router.keepSilent(keyA, 51);
    late.time = 40;
    end.time = 50;
    window.consumes(late);
    window.consumes(end);
    EXPECT_THAT(window.calls, ElementsAre("down a", "up a"));
    // Its repeats stay silent.
    auto again = press(keyA);
    again.time = 60;
    window.consumes(again);
    EXPECT_THAT(window.calls, ElementsAre("down a", "up a"));
}

TEST_F(SharedKeys, AKeyOfTheTapsIsNewForTheWindowAlthoughTheTapHasNotHeardOfItsRelease) {
    auto first = tapped(KeyboardTap::Event::Type::keyDown, keyA);
    first.time = 10;
    rules.decide(first);
    const auto& keys = window.router.keys;
    keys->markPlayed(keyA, keys->find(keyA)->serial);
    // In the millisecond of its press, so that the tap is waited for.
    window.router.handleReleaseElsewhere(keyA, 10);
    auto next = press(keyA);
    next.time = 20;
    window.consumes(next);
    EXPECT_THAT(window.calls, ElementsAre("up a", "down a"));
    // Which tells it now.
    first.type = KeyboardTap::Event::Type::keyUp;
    rules.isApplicationActive = true;
    EXPECT_EQ(rules.decide(first).action, GlobalKeyRules::Action::none);
    EXPECT_TRUE(keys->isDown(keyA));
}

TEST_F(SharedKeys, TheWindowDoesFirstWhatCameInEarlierByAnotherRoad) {
    window.router.catchUp = [this] {
        if (window.calls.empty()) {
            window.calls.emplace_back("earlier");
        }
    };
    window.consumes(press(keyA));
    EXPECT_THAT(window.calls, ElementsAre("earlier", "down a"));
    window.calls.clear();
    window.router.handleReleaseElsewhere(keyA, 5);
    EXPECT_THAT(window.calls, ElementsAre("earlier", "up a"));
}

TEST_F(SharedKeys, ARepeatOfTheHotkeyThatItsEndHasOvertakenTogglesNothing) {
    window.router.keepSilent(keyCaret, 40);
    window.router.handleReleaseElsewhere(keyCaret, 60);
    auto late = press(keyCaret);
    late.time = 50;
    EXPECT_TRUE(window.consumes(late));
    EXPECT_THAT(window.calls, IsEmpty());
    late.time = 70;
    EXPECT_TRUE(window.consumes(late));
    EXPECT_THAT(window.calls, ElementsAre("hotkey"));
}

} // namespace
} // namespace tavro
