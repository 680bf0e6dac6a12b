#include "Performance/ControllerFixture.h"
#include "Performance/SettingReaction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct FieldChange {
    const char* field;
    SettingReaction reaction;
    std::function<void(PerformanceState&)> edit;
};

class FieldChanges : public testing::TestWithParam<FieldChange> {};

TEST_P(FieldChanges, reactAsTheFieldAsks) {
    ControllerFixture fixture;
    fixture.controller.handleKeyDown(U'a');
    fixture.takeSent();
    const auto previous = fixture.controller.state();
    fixture.change(GetParam().edit);
    EXPECT_EQ(reactionTo(previous, fixture.controller.state()), GetParam().reaction);
    if (GetParam().reaction == SettingReaction::none) {
        EXPECT_THAT(fixture.takeSent(), IsEmpty());
        EXPECT_THAT(fixture.controller.activeKeys(), ElementsAre(U'a'));
        EXPECT_EQ(fixture.chord(), "C4");
    } else {
        EXPECT_THAT(fixture.takeSent(), ElementsAre("off 60"));
        EXPECT_THAT(fixture.controller.activeKeys(), IsEmpty());
        EXPECT_THAT(fixture.controller.highlightedKeys(), IsEmpty());
        EXPECT_EQ(fixture.chord(), "-");
    }
}

INSTANTIATE_TEST_SUITE_P(
    EachField, FieldChanges,
    testing::Values(
        FieldChange{"rootSemitone", SettingReaction::rebuild, [](auto& state) { state.rootSemitone = 1; }},
        FieldChange{"scaleName", SettingReaction::rebuild, [](auto& state) { state.scaleName = "Major"; }},
        FieldChange{"baseMidiC", SettingReaction::none, [](auto& state) { state.baseMidiC = 48; }},
        FieldChange{"globalOctaveOffset", SettingReaction::rebuild,
                    [](auto& state) { state.globalOctaveOffset = 1; }},
        FieldChange{"velocity", SettingReaction::none, [](auto& state) { state.velocity = 1; }},
        FieldChange{"humanizeVelocity", SettingReaction::none,
                    [](auto& state) { state.humanizeVelocity = 1; }},
        FieldChange{"strumMilliseconds", SettingReaction::none,
                    [](auto& state) { state.strumMilliseconds = 9; }},
        FieldChange{"voicingComplexity", SettingReaction::rebuild,
                    [](auto& state) { state.voicingComplexity = 9; }},
        FieldChange{"maxChordNotes", SettingReaction::rebuild, [](auto& state) { state.maxChordNotes = 3; }},
        FieldChange{"midiChannel", SettingReaction::rebuild, [](auto& state) { state.midiChannel = 2; }},
        FieldChange{"chordMode", SettingReaction::rebuild,
                    [](auto& state) { state.chordMode = ChordMode::ninth; }},
        FieldChange{"holdMode", SettingReaction::silence, [](auto& state) { state.holdMode = true; }},
        FieldChange{"smartHoldMode", SettingReaction::silence,
                    [](auto& state) { state.smartHoldMode = true; }},
        FieldChange{"bassNoteEnabled", SettingReaction::none,
                    [](auto& state) { state.bassNoteEnabled = true; }},
        FieldChange{"bassOctaveDown", SettingReaction::none, [](auto& state) { state.bassOctaveDown = 2; }},
        FieldChange{"splitModeEnabled", SettingReaction::rebuild,
                    [](auto& state) { state.splitModeEnabled = true; }},
        FieldChange{"melodyOctaveOffset", SettingReaction::rebuild,
                    [](auto& state) { state.melodyOctaveOffset = 1; }},
        FieldChange{"keyboardLayout", SettingReaction::rebuild,
                    [](auto& state) { state.keyboardLayout = KeyboardLayoutKind::qwerty; }}),
    [](const auto& change) { return change.param.field; });

TEST(SettingChanges, anEqualStateChangesNothing) {
    ControllerFixture fixture;
    fixture.controller.handleKeyDown(U'a');
    fixture.takeSent();
    int changes = 0;
    QObject::connect(&fixture.controller, &PerformanceController::stateChanged, [&changes] { ++changes; });
    fixture.change([](auto&) {});
    EXPECT_EQ(changes, 0);
    EXPECT_THAT(fixture.takeSent(), IsEmpty());
}

TEST(SettingChanges, silencingGoesToTheChannelOnWhichTheNotesSound) {
    ControllerFixture fixture;
    fixture.controller.handleKeyDown(U'a');
    fixture.change([](auto& state) { state.midiChannel = 5; });
    fixture.controller.handleKeyDown(U'a');
    EXPECT_THAT(fixture.takeSent(), ElementsAre("on 60", "off 60", "on 60 on channel 5"));
}

TEST(SettingChanges, aNewLayoutIsPlayedAtOnce) {
    ControllerFixture fixture;
    fixture.change([](auto& state) { state.keyboardLayout = KeyboardLayoutKind::qwerty; });
    fixture.controller.handleKeyDown(U'z');
    EXPECT_THAT(fixture.takeSent(), ElementsAre("on 48"));
}

TEST(SettingChanges, theChordModeFollowsTheComplexityUnlessOff) {
    ControllerFixture fixture;
    fixture.change([](auto& state) { state.voicingComplexity = 90; });
    EXPECT_EQ(fixture.controller.state().chordMode, ChordMode::off);
    fixture.change([](auto& state) { state.chordMode = ChordMode::triad; });
    EXPECT_EQ(fixture.controller.state().chordMode, ChordMode::triad);
    fixture.change([](auto& state) { state.voicingComplexity = 70; });
    EXPECT_EQ(fixture.controller.state().chordMode, ChordMode::seventh);
    fixture.change([](auto& state) { state.voicingComplexity = 85; });
    EXPECT_EQ(fixture.controller.state().chordMode, ChordMode::ninth);
}

TEST(SettingChanges, holdAndSmartHoldExcludeEachOther) {
    ControllerFixture fixture;
    auto& controller = fixture.controller;
    controller.setSmartHoldBinding(true);
    controller.setHoldBinding(true);
    EXPECT_TRUE(controller.holdBinding());
    EXPECT_FALSE(controller.smartHoldBinding());
    controller.setSmartHoldBinding(true);
    EXPECT_FALSE(controller.holdBinding());
    EXPECT_TRUE(controller.smartHoldBinding());
    controller.setSmartHoldBinding(false);
    EXPECT_FALSE(controller.holdBinding());
    EXPECT_FALSE(controller.smartHoldBinding());
}

TEST(SettingChanges, turningOneHoldOffLeavesTheOther) {
    ControllerFixture fixture;
    fixture.controller.setSmartHoldBinding(true);
    fixture.controller.setHoldBinding(false);
    EXPECT_TRUE(fixture.controller.smartHoldBinding());
}

TEST(SettingChanges, theChordSwitchChoosesTheModeFromTheComplexity) {
    ControllerFixture fixture;
    auto& controller = fixture.controller;
    controller.setChordComplexityBinding(94);
    EXPECT_EQ(controller.state().chordMode, ChordMode::off);
    controller.setChordEnabledBinding(true);
    EXPECT_EQ(controller.state().chordMode, ChordMode::eleventh);
    controller.setChordComplexityBinding(79);
    EXPECT_EQ(controller.state().chordMode, ChordMode::seventh);
    controller.setChordEnabledBinding(false);
    EXPECT_EQ(controller.state().chordMode, ChordMode::off);
}

TEST(SettingChanges, switchingChordsOnAgainAppliesTheRuleAgain) {
    ControllerFixture fixture;
    fixture.change([](auto& state) { state.voicingComplexity = 94; });
    fixture.change([](auto& state) { state.chordMode = ChordMode::triad; });
    fixture.controller.setChordEnabledBinding(true);
    EXPECT_EQ(fixture.controller.state().chordMode, ChordMode::eleventh);
}

TEST(SettingChanges, splitModeTurnsChordsOn) {
    ControllerFixture fixture;
    auto& controller = fixture.controller;
    controller.setChordComplexityBinding(80);
    controller.setSplitModeBinding(true);
    EXPECT_EQ(controller.state().chordMode, ChordMode::ninth);
    controller.setChordEnabledBinding(false);
    controller.setSplitModeBinding(true);
    EXPECT_EQ(controller.state().chordMode, ChordMode::ninth);
    controller.setSplitModeBinding(false);
    EXPECT_EQ(controller.state().chordMode, ChordMode::ninth);
}

} // namespace
} // namespace tavro
