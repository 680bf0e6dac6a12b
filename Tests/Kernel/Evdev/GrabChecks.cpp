#include "Check.h"
#include "Expectations.h"
#include "Stage.h"

#include <functional>
#include <memory>

namespace tavro::proof {

namespace {

void keysHeldAtTheGrabEndWhereTheyBegan() {
    Stage stage;
    TestKeyboard other("B");
    stage.start();
    stage.waitForDevice("B'");
    stage.keyboard.press(KEY_ENTER);
    stage.keyboard.press(KEY_A);
    stage.settle();
    stage.client.setPlaying(true);
    stage.tap.updateVerdicts();
    // The one with no key down is grabbed, the other one waits.
    stage.waitUntilGrabbed(other);
    static_cast<void>(stage.takeSeen());
    stage.expectTold({"down 28", "down 30"});
    expect(!stage.settle(), "the keyboard is grabbed while keys are held");
    stage.keyboard.release(KEY_ENTER);
    expect(!stage.settle(), "the keyboard is grabbed while a key is held");
    stage.keyboard.release(KEY_A);
    stage.waitUntilGrabbed(stage.keyboard);
    stage.expectSeen({"A 28 0", "A 30 0"});
    stage.expectTold({"up 28", "up 30"});
    expectEqual(stage.spectator.held(), {}, "the keys that others take for held");
}

void keysTypedBeforeTheGrabDoNotSoundAsWell() {
    Stage stage;
    stage.start();
    // The hotkey is held while the next keys are typed already.
    stage.keyboard.press(ScriptedClient::hotkey);
    stage.settle();
    expect(stage.client.isPlaying(), "the hotkey does not toggle");
    static_cast<void>(stage.takeSeen());
    static_cast<void>(stage.client.takeTold());
    stage.keyboard.press(KEY_A);
    stage.keyboard.press(KEY_ENTER);
    stage.keyboard.release(ScriptedClient::hotkey);
    stage.keyboard.release(KEY_ENTER);
    stage.keyboard.release(KEY_A);
    stage.waitUntilGrabbed(stage.keyboard);
    stage.expectSeen({"A 30 1", "A 28 1", "A 67 0", "A 28 0", "A 30 0"});
    stage.expectTold({"down 28", "up 67", "up 28"});
}

void hotkeyTogglesBackBeforeTheGrab() {
    Stage stage;
    stage.start();
    stage.keyboard.press(KEY_SPACE);
    stage.keyboard.tap(ScriptedClient::hotkey);
    stage.settle();
    expect(stage.client.isPlaying(), "the hotkey does not toggle");
    stage.keyboard.tap(ScriptedClient::hotkey);
    stage.settle();
    expect(!stage.client.isPlaying(), "the hotkey does not toggle back");
    stage.keyboard.release(KEY_SPACE);
    stage.settle();
}

void keysHeldAtTheEndEndWhereTheyBegan() {
    Stage stage;
    stage.start();
    stage.play();
    stage.keyboard.press(KEY_A);
    stage.keyboard.press(KEY_ENTER);
    stage.keyboard.press(KEY_LEFTSHIFT);
    stage.settle();
    stage.stopPlaying();
    expect(stage.settle(), "the keyboard is given back while keys are held");
    // The client does not play any more, and the next key is for others.
    stage.keyboard.tap(KEY_S);
    stage.keyboard.release(KEY_ENTER);
    stage.keyboard.release(KEY_LEFTSHIFT);
    expect(stage.settle(), "the keyboard is given back while a swallowed key is held");
    stage.keyboard.release(KEY_A);
    stage.waitUntilFree(stage.keyboard);
    stage.expectSeen({"A' 28 1", "A' 42 1", "A' 31 1", "A' 31 0", "A' 28 0", "A' 42 0"});
    stage.expectTold({"down 30!", "down 28", "down 31 S", "up 31 S", "up 28 S", "up 30"});
    expectEqual(stage.spectator.held(), {}, "the keys that others take for held");
}

/// Ends the tap while a key is down on the copy and another one is swallowed, and looks at what is left.
void expectAllIsFreeAfter(Stage& stage, const std::function<void()>& end) {
    stage.play();
    stage.keyboard.press(KEY_A);
    stage.keyboard.press(KEY_ENTER);
    stage.settle();
    end();
    stage.waitForNoDevice("A'");
    auto seen = stage.takeSeen();
    // What is typed right before a device goes may go with it; others release its keys then.
    std::erase(seen, "A' 28 0");
    expectEqual(seen, {"A' 28 1"}, "what others see");
    expectEqual(stage.spectator.held(), {}, "the keys that others take for held");
    stage.keyboard.release(KEY_ENTER);
    stage.keyboard.release(KEY_A);
    stage.keyboard.tap(KEY_S);
    waitFor(
        [&] {
            stage.spectator.look();
            return stage.spectator.count(KEY_S, 0) == 1;
        },
        "the keyboard to be free");
    expectEqual(stage.takeSeen(), {"A 28 0", "A 30 0", "A 31 1", "A 31 0"}, "what others see afterwards");
    expectEqual(stage.spectator.held(), {}, "the keys that others take for held");
}

void disposalGivesTheKeyboardBack() {
    Stage stage;
    stage.start();
    expectAllIsFreeAfter(stage, [&] { stage.tap.dispose(); });
    // Nobody is called after it.
    stage.expectTold({"down 30!", "down 28"});
}

void switchingOffGivesTheKeyboardBack() {
    Stage stage;
    stage.start();
    expectAllIsFreeAfter(stage, [&] { stage.tap.enable(false); });
    stage.expectTold({"down 30!", "down 28", "up 28", "up 30"});
    stage.tap.enable(true);
    stage.waitForDevice("A'");
    stage.waitUntilGrabbed(stage.keyboard);
    stage.keyboard.tap(KEY_A);
    stage.expectSeen({});
    stage.expectTold({"down 30!", "up 30"});
}

void destructionGivesTheKeyboardBack() {
    Stage stage;
    auto tap = std::make_unique<evdev::KeyboardTapAdapter>();
    stage.client.setPlaying(true);
    expect(tap->create(stage.client), "the tap cannot be made");
    tap->enable(true);
    stage.waitForDevice("A'");
    stage.waitUntilGrabbed(stage.keyboard);
    tap.reset();
    stage.waitForNoDevice("A'");
    static_cast<void>(stage.takeSeen());
    stage.keyboard.tap(KEY_A);
    waitFor(
        [&] {
            stage.spectator.look();
            return stage.spectator.count(KEY_A, 0) == 1;
        },
        "the keyboard to be free");
    stage.expectTold({});
}

void tapThatIsOffTakesNothing() {
    Stage stage;
    stage.client.setPlaying(true);
    expect(stage.tap.create(stage.client), "the tap cannot be made");
    stage.tap.updateVerdicts();
    stage.keyboard.tap(KEY_A);
    waitFor(
        [&] {
            stage.spectator.look();
            return stage.spectator.count(KEY_A, 0) == 1;
        },
        "the key");
    expect(!stage.spectator.has("A'"), "there is a copy");
    stage.expectTold({});
}

} // namespace

std::vector<Check> grabChecks() {
    return {
        {"keys_held_at_the_grab_end_where_they_began", keysHeldAtTheGrabEndWhereTheyBegan},
        {"keys_typed_before_the_grab_do_not_sound_as_well", keysTypedBeforeTheGrabDoNotSoundAsWell},
        {"hotkey_toggles_back_before_the_grab", hotkeyTogglesBackBeforeTheGrab},
        {"keys_held_at_the_end_end_where_they_began", keysHeldAtTheEndEndWhereTheyBegan},
        {"disposal_gives_the_keyboard_back", disposalGivesTheKeyboardBack},
        {"switching_off_gives_the_keyboard_back", switchingOffGivesTheKeyboardBack},
        {"destruction_gives_the_keyboard_back", destructionGivesTheKeyboardBack},
        {"tap_that_is_off_takes_nothing", tapThatIsOffTakesNothing},
    };
}

} // namespace tavro::proof
