#include "Check.h"
#include "Expectations.h"
#include "Stage.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include <sys/ioctl.h>
#include <unistd.h>

namespace tavro::proof {

namespace {

std::string rateOf(int file) {
    std::array<unsigned int, REP_CNT> rate{};
    expect(ioctl(file, EVIOCGREP, rate.data()) == 0, "there is no rate of repetition");
    return std::to_string(rate[REP_DELAY]) + '/' + std::to_string(rate[REP_PERIOD]);
}

void setRate(int file, unsigned int delay, unsigned int period) {
    std::array<unsigned int, REP_CNT> rate{delay, period};
    expect(ioctl(file, EVIOCSREP, rate.data()) == 0, "the rate of repetition cannot be set");
}

/// As a display server lights what stands for its state.
void light(Stage& stage, const std::string& device, std::uint16_t light, bool isLit) {
    const std::array events{TestKeyboard::event(EV_LED, light, isLit ? 1 : 0),
                            TestKeyboard::event(EV_SYN, SYN_REPORT, 0)};
    expect(write(stage.spectator.descriptor(device), events.data(), sizeof events) ==
               static_cast<ssize_t>(sizeof events),
           "the lights cannot be set");
}

void heldKeyThatPassesRepeats() {
    Stage stage;
    setRate(stage.spectator.descriptor("A"), 150, 20);
    stage.start();
    stage.play();
    stage.keyboard.press(KEY_ENTER);
    waitFor(
        [&] {
            stage.spectator.look();
            return stage.spectator.count(KEY_ENTER, 2) >= 5;
        },
        "repeats");
    stage.keyboard.release(KEY_ENTER);
    stage.settle();
    auto seen = stage.takeSeen();
    const auto repeats = std::erase(seen, "A' 28 2");
    expectEqual(seen, {"A' 28 1", "A' 28 0"}, "what others see beside the repeats of the copy");
    // The kernel repeats on the keyboard and on the copy; passing on the ones as well would double them.
    const auto told = stage.client.takeTold();
    const auto originals = std::ranges::count(told, "repeat 28");
    expect(std::abs(static_cast<long>(repeats) - originals) <= 2,
           std::to_string(repeats) + " repeats of the copy and " + std::to_string(originals) +
               " of the keyboard");
}

void heldKeyThatPlaysDoesNotRepeatForOthers() {
    Stage stage;
    setRate(stage.spectator.descriptor("A"), 150, 20);
    stage.start();
    stage.play();
    stage.keyboard.press(KEY_A);
    std::vector<std::string> told;
    waitFor(
        [&] {
            stage.spectator.look();
            for (auto& key : stage.client.takeTold()) {
                told.push_back(std::move(key));
            }
            return std::ranges::count(told, "repeat 30") >= 5;
        },
        "repeats");
    stage.keyboard.release(KEY_A);
    stage.expectSeen({});
    expectEqual(told.front(), "down 30!", "the first of what the client is told");
    expect(std::ranges::count(told, "down 30!") == 1, "a repeat came as a press");
}

void copyHasTheRateOfItsKeyboard() {
    Stage stage;
    setRate(stage.spectator.descriptor("A"), 321, 43);
    stage.start();
    expectEqual(rateOf(stage.spectator.descriptor("A'")), "321/43", "the rate of the copy");
    setRate(stage.spectator.descriptor("A"), 234, 56);
    stage.play();
    expectEqual(rateOf(stage.spectator.descriptor("A'")), "234/56", "the rate of the copy at the grab");
}

void lightsOfTheCopyLightTheKeyboard() {
    Stage stage;
    stage.start();
    stage.play();
    expect(!stage.keyboard.isLit(LED_CAPSL), "Caps Lock is lit from the start");
    light(stage, "A'", LED_CAPSL, true);
    waitFor([&] { return stage.settle() && stage.keyboard.isLit(LED_CAPSL); }, "the light of Caps Lock");
    expect(!stage.keyboard.isLit(LED_NUML), "another light is lit");
    light(stage, "A'", LED_CAPSL, false);
    waitFor([&] { return stage.settle() && !stage.keyboard.isLit(LED_CAPSL); }, "Caps Lock to go dark");
}

void lightsStayAtTheGrab() {
    Stage stage;
    stage.start();
    light(stage, "A", LED_NUML, true);
    stage.settle();
    stage.play();
    expect(stage.keyboard.isLit(LED_NUML), "the light of Num Lock has gone");
    std::array<unsigned char, LED_CNT / 8> lights{};
    expect(ioctl(stage.spectator.descriptor("A'"), EVIOCGLED(sizeof lights), lights.data()) >= 0,
           "cannot read the lights of the copy");
    expect(lights[0] == 1U << LED_NUML, "the copy has other lights");
}

void ungrabbedTheLightsOfTheCopyAreItsOwn() {
    Stage stage;
    stage.start();
    light(stage, "A'", LED_CAPSL, true);
    stage.settle();
    stage.settle();
    expect(!stage.keyboard.isLit(LED_CAPSL), "the keyboard is lit by its copy");
}

void movementsPassAmongTheKeys() {
    Stage stage(TestKeyboard::Kind::withPointer);
    stage.start();
    stage.play();
    stage.spectator.watchMovements();
    stage.keyboard.writeFrame(
        {TestKeyboard::event(EV_REL, REL_X, 5), TestKeyboard::event(EV_REL, REL_Y, -3)});
    stage.keyboard.press(KEY_A);
    stage.keyboard.press(BTN_LEFT);
    stage.keyboard.writeFrame({TestKeyboard::event(EV_REL, REL_X, 1)});
    stage.keyboard.release(KEY_A);
    stage.keyboard.release(BTN_LEFT);
    stage.expectSeen({"A' REL_X 5", "A' REL_Y -3", "A' 272 1", "A' REL_X 1", "A' 272 0"});
}

} // namespace

std::vector<Check> copyChecks() {
    return {
        {"held_key_that_passes_repeats", heldKeyThatPassesRepeats},
        {"held_key_that_plays_does_not_repeat_for_others", heldKeyThatPlaysDoesNotRepeatForOthers},
        {"copy_has_the_rate_of_its_keyboard", copyHasTheRateOfItsKeyboard},
        {"lights_of_the_copy_light_the_keyboard", lightsOfTheCopyLightTheKeyboard},
        {"lights_stay_at_the_grab", lightsStayAtTheGrab},
        {"ungrabbed_the_lights_of_the_copy_are_its_own", ungrabbedTheLightsOfTheCopyAreItsOwn},
        {"movements_pass_among_the_keys", movementsPassAmongTheKeys},
    };
}

} // namespace tavro::proof
