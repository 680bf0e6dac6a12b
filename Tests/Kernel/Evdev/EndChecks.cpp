#include "Check.h"
#include "ChildProcess.h"
#include "Expectations.h"
#include "InputFolder.h"
#include "Stage.h"

#include <csignal>
#include <initializer_list>
#include <memory>

#include <unistd.h>

namespace tavro::proof {

namespace {

void expectFree(Stage& stage) {
    stage.waitForNoDevice("A'");
    static_cast<void>(stage.takeSeen());
    const auto releases = stage.spectator.count(KEY_Z, 0);
    stage.keyboard.tap(KEY_Z);
    waitFor(
        [&] {
            stage.spectator.look();
            return stage.spectator.count(KEY_Z, 0) > releases;
        },
        "the keyboard to be free");
    expectEqual(stage.takeSeen(), {"A 44 1", "A 44 0"}, "what others see when all is over");
    expectEqual(stage.spectator.held(), {}, "the keys that others take for held");
}

void expectEnd(Stage& stage, KeyboardTap::End end) {
    waitFor(
        [&] {
            stage.spectator.look();
            return stage.client.end().has_value();
        },
        "the client to be told of the end");
    expect(stage.client.end() == end, "the client is told of another end");
}

void bothShiftsAndEscapeEndIt() {
    Stage stage;
    TestKeyboard other("B");
    stage.start();
    stage.waitForDevice("B'");
    stage.play();
    stage.waitUntilGrabbed(other);
    stage.keyboard.press(KEY_A);
    stage.settle();
    stage.expectTold({"down 30!"});
    // Whichever keyboards they are on, while keys play.
    stage.keyboard.press(KEY_LEFTSHIFT);
    stage.keyboard.press(KEY_ESC);
    other.press(KEY_RIGHTSHIFT);
    expectEnd(stage, KeyboardTap::End::emergencyExit);
    stage.waitForNoDevice("B'");
    stage.keyboard.release(KEY_A);
    stage.keyboard.release(KEY_LEFTSHIFT);
    stage.keyboard.release(KEY_ESC);
    other.release(KEY_RIGHTSHIFT);
    expectFree(stage);
    // What the client knew to be down was released before; afterwards it hears nothing.
    stage.expectTold({"down 1 S", "up 1 S", "up 30 S"});
    stage.tap.updateVerdicts();
    stage.tap.enable(true);
    stage.tap.dispose();
    expectFree(stage);
    stage.start();
}

void bothShiftsAndEscapeEndItWithoutAGrab() {
    Stage stage;
    stage.start();
    for (const auto key : std::initializer_list<std::uint16_t>{KEY_ESC, KEY_RIGHTSHIFT, KEY_LEFTSHIFT}) {
        stage.keyboard.press(key);
    }
    expectEnd(stage, KeyboardTap::End::emergencyExit);
    for (const auto key : std::initializer_list<std::uint16_t>{KEY_ESC, KEY_RIGHTSHIFT, KEY_LEFTSHIFT}) {
        stage.keyboard.release(key);
    }
    expectFree(stage);
}

void otherCombinationsDoNotEndIt() {
    Stage stage;
    stage.start();
    stage.play();
    stage.keyboard.press(KEY_LEFTSHIFT);
    stage.keyboard.tap(KEY_ESC);
    stage.keyboard.press(KEY_RIGHTSHIFT);
    stage.keyboard.release(KEY_LEFTSHIFT);
    stage.keyboard.tap(KEY_ESC);
    stage.keyboard.release(KEY_RIGHTSHIFT);
    expect(stage.settle(), "the keyboard is not grabbed any more");
    expect(!stage.client.end().has_value(), "the tap has ended");
}

void killedProgramGivesTheKeyboardBack() {
    Stage stage;
    ChildProcess child([] {
        ScriptedClient client;
        client.setPlaying(true);
        evdev::KeyboardTapAdapter tap;
        if (!tap.create(client)) {
            return 1;
        }
        tap.enable(true);
        pause();
        return 2;
    });
    stage.waitForDevice("A'");
    // The child's client is not asked here: what comes by the copy tells of the grab.
    stage.spectator.waitForWayBy("A'", stage.keyboard);
    stage.keyboard.press(KEY_A);
    stage.keyboard.press(KEY_LEFT);
    waitFor(
        [&] {
            stage.spectator.look();
            return stage.spectator.count(KEY_LEFT, 1) == 1;
        },
        "the key that passes");
    expect(stage.spectator.count(KEY_A, 1) == 0, "the key to play is not swallowed");
    child.kill();
    expectEqual(std::to_string(child.wait()), std::to_string(-SIGKILL), "the end of the child");
    stage.waitForNoDevice("A'");
    stage.keyboard.release(KEY_A);
    stage.keyboard.release(KEY_LEFT);
    expectFree(stage);
}

void lostFolderEndsIt() {
    Stage stage;
    InputFolder folder;
    folder.add(stage.keyboard);
    evdev::KeyboardTapAdapter tap({.folder = folder.path()});
    stage.client.setPlaying(true);
    expect(tap.create(stage.client), "the tap cannot be made");
    tap.enable(true);
    stage.waitForDevice("A'");
    stage.waitUntilGrabbed(stage.keyboard);
    static_cast<void>(stage.client.takeTold());
    folder.remove();
    expectEnd(stage, KeyboardTap::End::lost);
    expectFree(stage);
    stage.expectTold({});
}

void lastKeyboardMayGoAndReturn() {
    Stage stage;
    InputFolder folder;
    auto only = std::make_unique<TestKeyboard>("B");
    folder.add(*only);
    evdev::KeyboardTapAdapter tap({.folder = folder.path()});
    stage.client.setPlaying(true);
    expect(tap.create(stage.client), "the tap cannot be made");
    tap.enable(true);
    stage.waitForDevice("B'");
    folder.remove(*only);
    only.reset();
    stage.waitForNoDevice("B'");
    only = std::make_unique<TestKeyboard>("C");
    folder.add(*only);
    stage.waitForDevice("C'");
    stage.waitUntilGrabbed(*only);
    expect(!stage.client.end().has_value(), "the tap has ended");
}

} // namespace

std::vector<Check> endChecks() {
    return {
        {"both_shifts_and_escape_end_it", bothShiftsAndEscapeEndIt},
        {"both_shifts_and_escape_end_it_without_a_grab", bothShiftsAndEscapeEndItWithoutAGrab},
        {"other_combinations_do_not_end_it", otherCombinationsDoNotEndIt},
        {"killed_program_gives_the_keyboard_back", killedProgramGivesTheKeyboardBack},
        {"lost_folder_ends_it", lostFolderEndsIt},
        {"last_keyboard_may_go_and_return", lastKeyboardMayGoAndReturn},
    };
}

} // namespace tavro::proof
