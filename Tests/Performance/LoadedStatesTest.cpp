#include "Performance/ControllerFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct LoadedStates : testing::Test {
    LoadedStates() {
        QObject::connect(&fixture.controller, &PerformanceController::stateChanged, [this] { ++changes; });
        QObject::connect(&fixture.controller, &PerformanceController::playingStateReset,
                         [this] { ++resets; });
    }

    ControllerFixture fixture;
    PerformanceController& controller = fixture.controller;
    int changes = 0;
    int resets = 0;
};

TEST_F(LoadedStates, silenceWhatSoundsEvenWhenNothingDiffers) {
    controller.handleKeyDown(U'a');
    fixture.takeSent();
    controller.loadState(controller.state());
    EXPECT_THAT(fixture.takeSent(), ElementsAre("off 60"));
    EXPECT_THAT(controller.activeKeys(), IsEmpty());
    EXPECT_THAT(controller.highlightedKeys(), IsEmpty());
    EXPECT_EQ(fixture.chord(), "-");
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(resets, 1);
}

TEST_F(LoadedStates, silenceWhereTheNotesSound) {
    controller.handleKeyDown(U'a');
    auto state = controller.state();
    state.midiChannel = 5;
    controller.loadState(state);
    controller.handleKeyDown(U'a');
    EXPECT_THAT(fixture.takeSent(), ElementsAre("on 60", "off 60", "on 60 on channel 5"));
}

TEST_F(LoadedStates, replaceTheEngineWhateverDiffers) {
    // Alone this would apply from the next press, and the held key would go on.
    auto state = controller.state();
    controller.handleKeyDown(U'a');
    state.velocity = 1;
    controller.loadState(state);
    EXPECT_TRUE(controller.engine().activeNotesByKey().empty());
    fixture.takeSent();
    controller.handleKeyUp(U'a');
    EXPECT_THAT(fixture.takeSent(), IsEmpty());
}

TEST_F(LoadedStates, endAStrumThatIsOnItsWay) {
    fixture.change([](auto& state) {
        state.chordMode = ChordMode::triad;
        state.scaleName = "Major";
        state.strumMilliseconds = 40;
    });
    controller.handleKeyDown(U'a');
    controller.loadState(controller.state());
    fixture.takeSent();
    fixture.mainActor.runToEnd();
    EXPECT_THAT(fixture.takeSent(), IsEmpty());
    EXPECT_THAT(controller.highlightedKeys(), IsEmpty());
}

TEST_F(LoadedStates, tellOfTheirChangesOnce) {
    controller.loadState({.rootSemitone = 3, .velocity = 9, .midiChannel = 2, .holdMode = true});
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(resets, 1);
    EXPECT_EQ(controller.state().rootSemitone, 3);
    EXPECT_TRUE(controller.state().holdMode);
}

TEST_F(LoadedStates, keepTheChordModeInStepWithAnotherComplexity) {
    controller.loadState({.voicingComplexity = 85, .chordMode = ChordMode::triad});
    EXPECT_EQ(controller.state().chordMode, ChordMode::ninth);
    controller.loadState({.voicingComplexity = 20, .chordMode = ChordMode::off});
    EXPECT_EQ(controller.state().chordMode, ChordMode::off);
}

} // namespace
} // namespace tavro
