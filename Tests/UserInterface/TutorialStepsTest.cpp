#include "UserInterface/TutorialSteps.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace tavro {
namespace {

using testing::ElementsAre;

struct Words {
    std::string title;
    std::string symbol;
    std::string body;
    std::string note;

    friend bool operator==(const Words&, const Words&) = default;

    friend std::ostream& operator<<(std::ostream& stream, const Words& words) {
        return stream << words.title << " / " << words.symbol << " / " << words.body << " / " << words.note;
    }
};

std::vector<Words> steps(const char* hotkey, KeyboardAccess access) {
    std::vector<Words> all;
    for (const auto& step : TutorialSteps::make(QString::fromUtf8(hotkey), access)) {
        all.push_back({step.title.toStdString(), step.symbol.toStdString(), step.body.toStdString(),
                       step.note.toStdString()});
    }
    return all;
}

TEST(TutorialStepsTest, TheSixStepsInTheirOrder) {
    EXPECT_THAT(
        steps("^", KeyboardAccess::accessibilitySettings),
        ElementsAre(
            Words{
                "Welcome to TAVRO", "sparkles",
                "TAVRO sends MIDI notes; it does not make sound itself. In your DAW, load an instrument and "
                "enable TAVRO Out as its MIDI input. Open Settings at the bottom of TAVRO to check MIDI "
                "Output.",
                ""},
            Words{
                "Play inside your DAW", "keyboard",
                "Global Play lets your keyboard play TAVRO while your DAW or another app is in front. Open "
                "Settings at the bottom, then turn Global Play On. The Global On / Off indicator at the top "
                "shows whether it is active.",
                ""},
            Words{"Your Global Play shortcut", "slider.horizontal.3",
                  "Press ^ to toggle Global Play, even while working in your DAW. This is your current "
                  "shortcut; change it in Settings > Global Play Hotkey. Turn Global Play off before typing "
                  "text in another app.",
                  ""},
            Words{
                "Allow keyboard access", "music.note.list",
                "If Global Play does not respond, allow TAVRO in macOS System Settings > Privacy & Security "
                "> Accessibility. Return to TAVRO and enable Global Play again. With Global Play off, you "
                "can still play while TAVRO is in front.",
                ""},
            Words{"Chords and melodies", "globe",
                  "Choose Root, Scale and Octave in the top row. Switch Chord on for one-key chords. Open "
                  "Advanced for Chord Complexity and Strum. Split Mode lets the 1 and Q rows play melodies "
                  "over chords on the lower two rows.",
                  ""},
            Words{
                "Hold, save and stop", "square.and.arrow.down",
                "Hold sustains notes after release; Smart Hold replaces the previous chord as you play. Save "
                "and Load at the top manage presets. The red stop button at the top right stops all notes. "
                "Reopen this tour anytime with the ? button in the top bar.",
                ""}));
}

TEST(TutorialStepsTest, TheHotkeyStandsInTheThirdStepAsItIsShown) {
    for (const std::string hotkey : {"Ctrl+Alt+Shift+Super+K", "%1", "%2", "<b>", "Ö", ""}) {
        EXPECT_EQ(
            steps(hotkey.c_str(), KeyboardAccess::accessibilitySettings).at(2).body,
            "Press " + hotkey +
                " to toggle Global Play, even while working in your DAW. This is your current shortcut; "
                "change it in Settings > Global Play Hotkey. Turn Global Play off before typing text in "
                "another app.");
    }
}

TEST(TutorialStepsTest, WhereTheDisplayHandsOutTheKeysTheFourthStepHasOneLineMore) {
    auto expected = steps("^", KeyboardAccess::accessibilitySettings);
    expected.at(3).note =
        "On Linux: under X11 there is nothing to allow; under Wayland your user needs access "
        "to the keyboards, see Global Play in the README.";
    EXPECT_EQ(steps("^", KeyboardAccess::displayOrInputDevices), expected);
}

} // namespace
} // namespace tavro
