#include "Check.h"
#include "Expectations.h"
#include "Stage.h"

#include <initializer_list>

namespace tavro::proof {

namespace {

void keysThatPlayAreSwallowed() {
    Stage stage;
    stage.start();
    stage.play();
    for (const auto key : std::initializer_list<std::uint16_t>{KEY_A, KEY_Z, KEY_1, KEY_P}) {
        stage.keyboard.tap(key);
    }
    stage.expectSeen({});
    stage.expectTold({"down 30!", "up 30", "down 44!", "up 44", "down 2!", "up 2", "down 25!", "up 25"});
}

void keysHeldTogetherAllPlay() {
    Stage stage;
    stage.start();
    stage.play();
    stage.keyboard.press(KEY_A);
    stage.keyboard.press(KEY_S);
    stage.keyboard.press(KEY_D);
    stage.keyboard.release(KEY_S);
    stage.keyboard.release(KEY_A);
    stage.keyboard.release(KEY_D);
    stage.expectSeen({});
    stage.expectTold({"down 30!", "down 31!", "down 32!", "up 31", "up 30", "up 32"});
}

void otherKeysComeByTheCopyAlone() {
    Stage stage;
    stage.start();
    stage.play();
    stage.keyboard.tap(KEY_ENTER);
    stage.keyboard.tap(KEY_LEFT);
    // Twice: the console minds it too.
    stage.keyboard.tap(KEY_CAPSLOCK);
    stage.keyboard.tap(KEY_CAPSLOCK);
    stage.expectSeen(
        {"A' 28 1", "A' 28 0", "A' 105 1", "A' 105 0", "A' 58 1", "A' 58 0", "A' 58 1", "A' 58 0"});
    stage.expectTold({"down 28", "up 28", "down 105", "up 105", "down 58", "up 58", "down 58", "up 58"});
}

void orderOfMixedKeysIsKept() {
    Stage stage;
    stage.start();
    stage.play();
    stage.keyboard.press(KEY_A);
    stage.keyboard.press(KEY_ENTER);
    stage.keyboard.press(KEY_S);
    stage.keyboard.press(KEY_TAB);
    stage.keyboard.release(KEY_ENTER);
    stage.keyboard.release(KEY_A);
    stage.keyboard.press(KEY_ENTER);
    stage.keyboard.release(KEY_TAB);
    stage.keyboard.release(KEY_S);
    stage.keyboard.release(KEY_ENTER);
    stage.expectSeen({"A' 28 1", "A' 15 1", "A' 28 0", "A' 28 1", "A' 15 0", "A' 28 0"});
    stage.expectTold({"down 30!", "down 28", "down 31!", "down 15", "up 28", "up 30", "down 28", "up 15",
                      "up 31", "up 28"});
}

void keysOfOneFrameAreTakenApart() {
    Stage stage;
    stage.start();
    stage.play();
    for (const auto value : {1, 0}) {
        stage.keyboard.writeFrame({TestKeyboard::event(EV_KEY, KEY_A, value),
                                   TestKeyboard::event(EV_KEY, KEY_ENTER, value),
                                   TestKeyboard::event(EV_KEY, KEY_S, value)});
    }
    stage.expectSeen({"A' 28 1", "A' 28 0"});
    stage.expectTold({"down 30!", "down 28", "down 31!", "up 30", "up 28", "up 31"});
}

void rawCodesGoWithTheirKeys() {
    Stage stage;
    stage.start();
    stage.play();
    stage.spectator.watchRawCodes();
    stage.keyboard.press(KEY_A);
    stage.keyboard.tap(KEY_ENTER);
    stage.keyboard.release(KEY_A);
    stage.expectSeen({"A' raw 28", "A' 28 1", "A' raw 28", "A' 28 0"});
}

void modifiersPassWhileSwallowedKeysAreHeld() {
    Stage stage;
    stage.start();
    stage.play();
    stage.keyboard.press(KEY_A);
    stage.keyboard.press(KEY_LEFTCTRL);
    stage.keyboard.press(KEY_C);
    // It went down to play, and its release belongs to that.
    stage.keyboard.release(KEY_A);
    stage.keyboard.release(KEY_C);
    stage.keyboard.release(KEY_LEFTCTRL);
    stage.expectSeen({"A' 29 1", "A' 46 1", "A' 46 0", "A' 29 0"});
    stage.expectTold({"down 30!", "down 46 C", "up 30 C", "up 46 C"});
}

void everyModifierIsKnown() {
    Stage stage;
    stage.start();
    stage.play();
    const std::vector<std::pair<std::uint16_t, std::string>> modifiers{
        {KEY_LEFTCTRL, " C"}, {KEY_RIGHTCTRL, " C"}, {KEY_LEFTALT, " A"},    {KEY_RIGHTALT, " A"},
        {KEY_LEFTMETA, " M"}, {KEY_RIGHTMETA, " M"}, {KEY_LEFTSHIFT, " S!"}, {KEY_RIGHTSHIFT, " S!"},
    };
    for (const auto& [key, words] : modifiers) {
        stage.keyboard.press(key);
        stage.keyboard.press(KEY_A);
        stage.keyboard.release(key);
        stage.keyboard.release(KEY_A);
        const auto name = "A' " + std::to_string(key);
        if (words == " S!") {
            stage.expectSeen({name + " 1", name + " 0"});
        } else {
            // The modifier is up when the key is, and yet its release goes where its press went.
            stage.expectSeen({name + " 1", "A' 30 1", name + " 0", "A' 30 0"});
        }
        stage.expectTold({"down 30" + words, "up 30"});
    }
}

void hotkeyIsHeardWhileNothingIsGrabbed() {
    Stage stage;
    stage.start();
    stage.keyboard.tap(ScriptedClient::hotkey);
    stage.waitUntilGrabbed(stage.keyboard);
    stage.expectSeen({"A 67 1", "A 67 0"});
    stage.expectTold({"down 67", "up 67"});
    expect(stage.client.isPlaying(), "the hotkey does not toggle");
    stage.keyboard.tap(KEY_A);
    stage.keyboard.tap(ScriptedClient::hotkey);
    // A client tells the tap that it plays no more after it has heard why.
    stage.settle();
    stage.tap.updateVerdicts();
    stage.waitUntilFree(stage.keyboard);
    stage.keyboard.tap(KEY_A);
    stage.expectSeen({"A 30 1", "A 30 0"});
    stage.expectTold({"down 30!", "up 30", "down 67", "up 67", "down 30", "up 30"});
}

void nothingIsTakenWhileTheClientDoesNotPlay() {
    Stage stage;
    stage.start();
    stage.keyboard.tap(KEY_A);
    stage.keyboard.tap(KEY_ENTER);
    stage.expectSeen({"A 30 1", "A 30 0", "A 28 1", "A 28 0"});
    stage.expectTold({"down 30", "up 30", "down 28", "up 28"});
}

} // namespace

std::vector<Check> playingChecks() {
    return {
        {"keys_that_play_are_swallowed", keysThatPlayAreSwallowed},
        {"keys_held_together_all_play", keysHeldTogetherAllPlay},
        {"other_keys_come_by_the_copy_alone", otherKeysComeByTheCopyAlone},
        {"order_of_mixed_keys_is_kept", orderOfMixedKeysIsKept},
        {"keys_of_one_frame_are_taken_apart", keysOfOneFrameAreTakenApart},
        {"raw_codes_go_with_their_keys", rawCodesGoWithTheirKeys},
        {"modifiers_pass_while_swallowed_keys_are_held", modifiersPassWhileSwallowedKeysAreHeld},
        {"every_modifier_is_known", everyModifierIsKnown},
        {"hotkey_is_heard_while_nothing_is_grabbed", hotkeyIsHeardWhileNothingIsGrabbed},
        {"nothing_is_taken_while_the_client_does_not_play", nothingIsTakenWhileTheClientDoesNotPlay},
    };
}

} // namespace tavro::proof
