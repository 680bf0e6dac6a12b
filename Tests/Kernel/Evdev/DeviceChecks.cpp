#include "Check.h"
#include "Expectations.h"
#include "Stage.h"

#include <optional>

namespace tavro::proof {

namespace {

void keyboardPluggedInDuringTheGrabJoins() {
    Stage stage;
    stage.start();
    stage.play();
    TestKeyboard added("B");
    stage.waitForDevice("B'");
    stage.waitUntilGrabbed(added);
    static_cast<void>(stage.takeSeen());
    added.tap(KEY_A);
    added.tap(KEY_ENTER);
    stage.settle(added);
    stage.expectSeen({"B' 28 1", "B' 28 0"});
    stage.expectTold({"down 30!", "up 30", "down 28", "up 28"});
}

void unpluggedKeyboardReleasesItsKeys() {
    Stage stage;
    std::optional<TestKeyboard> other("B");
    stage.start();
    stage.waitForDevice("B'");
    stage.play();
    stage.waitUntilGrabbed(*other);
    static_cast<void>(stage.takeSeen());
    other->press(KEY_A);
    other->press(KEY_ENTER);
    other->press(KEY_LEFTCTRL);
    stage.settle(*other);
    stage.expectTold({"down 30!", "down 28"});
    // The kernel releases its keys as it goes, which one who is busy does not get to read.
    stage.client.block();
    stage.keyboard.tap(KEY_TAB);
    waitFor(
        [&] {
            stage.spectator.look();
            return stage.client.isBlocking();
        },
        "the tap to be busy");
    other.reset();
    stage.waitForNoDevice("B");
    stage.client.unblock();
    stage.waitForNoDevice("B'");
    // Its Control key is not held any more, or this one would not play.
    stage.keyboard.tap(KEY_A);
    stage.settle();
    stage.expectTold({"down 15 C", "up 15 C", "up 28", "up 30", "down 30!", "up 30"});
    expectEqual(stage.spectator.held(), {}, "the keys that others take for held");
}

void keyboardThatReturnsJoinsAgain() {
    Stage stage;
    stage.start();
    stage.play();
    for (auto round = 0; round < 3; ++round) {
        TestKeyboard other("B");
        stage.waitForDevice("B'");
        stage.waitUntilGrabbed(other);
        other.tap(KEY_A);
        stage.settle(other);
        stage.expectTold({"down 30!", "up 30"});
    }
    stage.waitForNoDevice("B'");
}

void twoKeyboardsPlayTogether() {
    Stage stage;
    TestKeyboard other("B");
    stage.start();
    stage.waitForDevice("B'");
    stage.play();
    stage.waitUntilGrabbed(other);
    static_cast<void>(stage.takeSeen());
    static_cast<void>(stage.client.takeTold());
    // Again and again: the events of both may be read at once, and their order is that of their times.
    for (auto round = 0; round < 40; ++round) {
        other.press(KEY_LEFTCTRL);
        stage.keyboard.tap(KEY_C);
        other.release(KEY_LEFTCTRL);
        stage.keyboard.tap(KEY_C);
        other.press(KEY_RIGHTSHIFT);
        stage.keyboard.press(KEY_A);
        other.release(KEY_RIGHTSHIFT);
        stage.keyboard.release(KEY_A);
        stage.settle(other);
        stage.expectSeen({"B' 29 1", "A' 46 1", "A' 46 0", "B' 29 0", "B' 54 1", "B' 54 0"});
        stage.expectTold({"down 46 C", "up 46 C", "down 46!", "up 46", "down 30 S!", "up 30"});
    }
}

void sameKeyOnTwoKeyboardsIsBalanced() {
    Stage stage;
    TestKeyboard other("B");
    stage.start();
    stage.waitForDevice("B'");
    stage.play();
    stage.waitUntilGrabbed(other);
    static_cast<void>(stage.takeSeen());
    stage.keyboard.press(KEY_ENTER);
    other.press(KEY_ENTER);
    stage.keyboard.release(KEY_ENTER);
    stage.keyboard.press(KEY_ENTER);
    other.release(KEY_ENTER);
    stage.keyboard.release(KEY_ENTER);
    stage.settle(other);
    stage.expectSeen({"A' 28 1", "B' 28 1", "A' 28 0", "A' 28 1", "B' 28 0", "A' 28 0"});
}

void onlyKeyboardsAreCopiedAndEachOnce() {
    Stage stage;
    const TestKeyboard mouse("M", TestKeyboard::Kind::mouse);
    stage.waitForDevice("M");
    stage.start();
    ScriptedClient secondClient;
    evdev::KeyboardTapAdapter second;
    expect(second.create(secondClient), "a second tap cannot be made");
    second.enable(true);
    // Each keyboard that comes makes the taps look at every device again, copies among them.
    for (auto round = 0; round < 3; ++round) {
        const TestKeyboard other("B");
        stage.waitForDevice("B'");
    }
    stage.waitForNoDevice("B'");
    waitFor(
        [&] {
            stage.spectator.look();
            return stage.spectator.devices() == std::vector<std::string>{"A", "A'", "A'", "M"};
        },
        "one copy by each tap of the one keyboard");
}

} // namespace

std::vector<Check> deviceChecks() {
    return {
        {"keyboard_plugged_in_during_the_grab_joins", keyboardPluggedInDuringTheGrabJoins},
        {"unplugged_keyboard_releases_its_keys", unpluggedKeyboardReleasesItsKeys},
        {"keyboard_that_returns_joins_again", keyboardThatReturnsJoinsAgain},
        {"two_keyboards_play_together", twoKeyboardsPlayTogether},
        {"same_key_on_two_keyboards_is_balanced", sameKeyOnTwoKeyboardsIsBalanced},
        {"only_keyboards_are_copied_and_each_once", onlyKeyboardsAreCopiedAndEachOnce},
    };
}

} // namespace tavro::proof
