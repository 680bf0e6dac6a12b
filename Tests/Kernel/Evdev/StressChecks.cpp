#include "Check.h"
#include "Expectations.h"
#include "RandomTyping.h"
#include "Seeds.h"
#include "Stage.h"

#include <algorithm>
#include <iterator>

namespace tavro::proof {

namespace {

// Few enough for the spectator's queue, even when it is not asked to run before they are done.
constexpr auto stepsAtOnce = 8;

void expectNothingHeld(Stage& stage) {
    expectEqual(stage.spectator.held(), {}, "the keys that others take for held");
}

void randomPressesComeExactlyOnce() {
    Stage stage;
    TestKeyboard other("B");
    stage.start();
    stage.waitForDevice("B'");
    stage.play();
    stage.waitUntilGrabbed(other);
    static_cast<void>(stage.takeSeen());
    static_cast<void>(stage.client.takeTold());
    RandomTyping typing(stage.keyboard, other, seedOr(20260417));
    std::vector<std::string> seen;
    std::vector<std::string> told;
    auto collect = [&] {
        stage.settle(stage.keyboard);
        stage.settle(other);
        std::ranges::move(stage.takeSeen(), std::back_inserter(seen));
        std::ranges::move(stage.client.takeTold(), std::back_inserter(told));
    };
    while (typing.presses() < 2000) {
        for (auto step = 0; step < stepsAtOnce; ++step) {
            typing.step();
        }
        collect();
    }
    typing.releaseAll();
    collect();
    expectEqual(seen, typing.expectedSeen(), "what others see");
    expectEqual(told, typing.expectedTold(), "what the client is told");
    expectNothingHeld(stage);
}

void everyPressIsPlayedOrTypedWhileItIsSwitched() {
    Stage stage;
    TestKeyboard other("B");
    stage.start();
    stage.waitForDevice("B'");
    RandomTyping typing(stage.keyboard, other, seedOr(7));
    auto isPlaying = false;
    std::vector<std::string> seen;
    std::vector<std::string> told;
    auto collect = [&] {
        stage.settle(stage.keyboard);
        stage.settle(other);
        std::ranges::move(stage.takeSeen(), std::back_inserter(seen));
        std::ranges::move(stage.client.takeTold(), std::back_inserter(told));
    };
    while (typing.presses() < 1000) {
        for (auto step = 0; step < stepsAtOnce; ++step) {
            typing.step();
            if (step == stepsAtOnce / 2) {
                isPlaying = !isPlaying;
                stage.client.setPlaying(isPlaying);
                stage.tap.updateVerdicts();
            }
        }
        if (typing.presses() % 3 == 0) {
            // Now and then no key is down, and grabs begin and end.
            typing.releaseAll();
        }
        collect();
    }
    typing.releaseAll();
    collect();
    auto endsWith = [](const std::string& end) {
        return [end](const std::string& word) { return word.ends_with(end); };
    };
    const auto typed = std::ranges::count_if(seen, endsWith(" 1"));
    const auto played = std::ranges::count_if(told, endsWith("!"));
    expectEqual(std::to_string(typed + played), std::to_string(typing.presses()),
                "presses typed or played (" + std::to_string(played) + " played)");
    // A key may go down right between the last look at the keys and the end of a grab. Others then see its
    // release on the keyboard as well, and make nothing of a release without a press. Were the keys not
    // looked at, it would be several in this many switches.
    const auto released = std::ranges::count_if(seen, endsWith(" 0"));
    expect(released >= typed && released <= typed + 2,
           std::to_string(released) + " releases of " + std::to_string(typed) + " presses seen by others");
    expect(played > 50 && typed > 50, "hardly anything was played, or typed");
    expectNothingHeld(stage);
}

void eventsLostInTheQueueLeaveNoKeyHeld() {
    Stage stage;
    stage.start();
    stage.play();
    stage.keyboard.press(KEY_ENTER);
    stage.keyboard.press(KEY_LEFTCTRL);
    stage.settle();
    stage.client.block();
    stage.keyboard.press(KEY_A);
    waitFor(
        [&] {
            stage.spectator.look();
            return stage.client.isBlocking();
        },
        "the tap to be busy");
    stage.keyboard.release(KEY_ENTER);
    stage.keyboard.release(KEY_LEFTCTRL);
    stage.keyboard.press(KEY_TAB);
    // More than any queue holds.
    for (auto round = 0; round < 1000; ++round) {
        stage.keyboard.tap(KEY_S);
    }
    stage.keyboard.release(KEY_A);
    stage.keyboard.press(KEY_D);
    stage.client.unblock();
    stage.settle();
    expectEqual(stage.spectator.held(), {"A' 15"}, "the keys that others take for held");
    stage.keyboard.release(KEY_TAB);
    stage.keyboard.release(KEY_D);
    stage.settle();
    expectNothingHeld(stage);
    // The client knows of no key either that would still be down.
    const auto told = stage.client.takeTold();
    for (const auto* const key : {"28", "30", "31", "32", "15"}) {
        auto isOf = [&](const std::string& word, const std::string& kind) {
            return word.starts_with(kind + ' ' + key);
        };
        const auto downs = std::ranges::count_if(told, [&](const auto& word) { return isOf(word, "down"); });
        const auto ups = std::ranges::count_if(told, [&](const auto& word) { return isOf(word, "up"); });
        expectEqual(std::to_string(ups), std::to_string(downs), "releases of " + std::string(key));
    }
    stage.keyboard.tap(KEY_D);
    stage.settle();
    stage.expectTold({"down 32!", "up 32"});
}

} // namespace

std::vector<Check> stressChecks() {
    return {
        {"random_presses_come_exactly_once", randomPressesComeExactlyOnce},
        {"every_press_is_played_or_typed_while_it_is_switched", everyPressIsPlayedOrTypedWhileItIsSwitched},
        {"events_lost_in_the_queue_leave_no_key_held", eventsLostInTheQueueLeaveNoKeyHeld},
    };
}

} // namespace tavro::proof
