#include "Performance/ControllerFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tavro {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

PerformanceState majorTriads() {
    PerformanceState state;
    state.scaleName = "Major";
    state.chordMode = ChordMode::triad;
    return state;
}

TEST(PerformanceController, playsAndReleasesAKey) {
    ControllerFixture fixture;
    fixture.controller.handleKeyDown(U'a');
    EXPECT_THAT(fixture.takeSent(), ElementsAre("on 60"));
    EXPECT_THAT(fixture.controller.activeKeys(), ElementsAre(U'a'));
    EXPECT_THAT(fixture.controller.highlightedKeys(), ElementsAre(U'a'));
    EXPECT_EQ(fixture.chord(), "C4");
    fixture.controller.handleKeyUp(U'a');
    EXPECT_THAT(fixture.takeSent(), ElementsAre("off 60"));
    EXPECT_THAT(fixture.controller.activeKeys(), IsEmpty());
    EXPECT_THAT(fixture.controller.highlightedKeys(), IsEmpty());
    EXPECT_EQ(fixture.chord(), "-");
}

TEST(PerformanceController, passesOverKeysOutsideTheLayout) {
    ControllerFixture fixture;
    fixture.controller.handleKeyDown(U'^');
    fixture.controller.handleKeyUp(U'^');
    EXPECT_THAT(fixture.takeSent(), IsEmpty());
    EXPECT_THAT(fixture.controller.activeKeys(), IsEmpty());
}

TEST(PerformanceController, namesChordsInTheSpellingOfTheKey) {
    ControllerFixture fixture(majorTriads());
    fixture.change([](auto& state) { state.rootSemitone = 3; });
    fixture.controller.handleKeyDown(U'a');
    EXPECT_EQ(fixture.chord(), "Eb");
}

TEST(PerformanceController, withHoldOnAReleaseOfAChordKeyDoesNothing) {
    ControllerFixture fixture;
    fixture.controller.setHoldBinding(true);
    fixture.controller.handleKeyDown(U'a');
    fixture.takeSent();
    fixture.controller.handleKeyUp(U'a');
    EXPECT_THAT(fixture.takeSent(), IsEmpty());
    EXPECT_THAT(fixture.controller.activeKeys(), ElementsAre(U'a'));
    fixture.controller.handleKeyDown(U'a');
    EXPECT_THAT(fixture.takeSent(), ElementsAre("off 60"));
}

TEST(PerformanceController, withHoldOnMelodyKeysAreStillReleased) {
    ControllerFixture fixture;
    fixture.controller.setHoldBinding(true);
    fixture.controller.setSplitModeBinding(true);
    fixture.controller.handleKeyDown(U'q');
    fixture.controller.handleKeyDown(U'a');
    fixture.takeSent();
    fixture.controller.handleKeyUp(U'q');
    fixture.controller.handleKeyUp(U'a');
    EXPECT_THAT(fixture.takeSent(), ElementsAre("off 72"));
    EXPECT_THAT(fixture.controller.activeKeys(), ElementsAre(U'a'));
}

TEST(PerformanceController, smartHoldRulesWhenBothAreOn) {
    auto state = majorTriads();
    state.holdMode = true;
    state.smartHoldMode = true;
    ControllerFixture fixture(state);
    fixture.controller.handleKeyDown(U'a');
    fixture.controller.handleKeyUp(U'a');
    fixture.takeSent();
    fixture.controller.handleKeyDown(U's');
    EXPECT_THAT(fixture.takeSent(), ElementsAre("off 60", "off 64", "off 67", "on 62", "on 65", "on 69"));
}

TEST(PerformanceController, panicEndsNotesAndWhatIsStillToCome) {
    auto state = majorTriads();
    state.strumMilliseconds = 30;
    ControllerFixture fixture(state);
    fixture.controller.handleKeyDown(U'a');
    fixture.takeSent();
    fixture.controller.panic();
    EXPECT_THAT(fixture.takeSent(), ElementsAre("off 60"));
    EXPECT_THAT(fixture.controller.activeKeys(), IsEmpty());
    EXPECT_THAT(fixture.controller.highlightedKeys(), IsEmpty());
    EXPECT_EQ(fixture.chord(), "-");
    EXPECT_FALSE(fixture.mainActor.hasWork());
}

TEST(PerformanceController, theStopButtonSilencesTheReceiversToo) {
    ControllerFixture fixture;
    fixture.controller.handleKeyDown(U'a');
    fixture.takeSent();
    fixture.controller.stopAllNotes();
    const auto sent = fixture.takeSent();
    ASSERT_EQ(sent.size(), 33U);
    EXPECT_EQ(sent[0], "off 60");
    EXPECT_EQ(sent[1], "cc 123 on 1");
    EXPECT_EQ(sent[32], "cc 120 on 16");
    EXPECT_EQ(fixture.status(), "Panic gesendet");
}

TEST(PerformanceController, shutsDownOnce) {
    ControllerFixture fixture;
    fixture.controller.handleKeyDown(U'a');
    fixture.takeSent();
    fixture.controller.shutDown();
    EXPECT_EQ(fixture.takeSent().size(), 33U);
    fixture.controller.shutDown();
    EXPECT_THAT(fixture.takeSent(), IsEmpty());
}

TEST(PerformanceController, losingTheFocusEndsEveryNote) {
    ControllerFixture fixture;
    fixture.controller.setFocused(true);
    fixture.controller.handleKeyDown(U'a');
    fixture.takeSent();
    fixture.controller.setFocused(true);
    EXPECT_THAT(fixture.takeSent(), IsEmpty());
    fixture.controller.setFocused(false);
    EXPECT_THAT(fixture.takeSent(), ElementsAre("off 60"));
    fixture.controller.setFocused(true);
    EXPECT_THAT(fixture.takeSent(), IsEmpty());
}

TEST(PerformanceController, endsNotesWhereTheySoundBeforeAnotherDestination) {
    ControllerFixture fixture;
    fixture.midiSystem.destinations = {{7, "Synth", {}}};
    fixture.controller.handleKeyDown(U'a');
    fixture.controller.selectDestination(7);
    fixture.controller.handleKeyUp(U'a');
    using Message = headless::MidiSystemAdapter::Message;
    EXPECT_THAT(fixture.midiSystem.messages,
                ElementsAre(Message{true, 3, {0x90, 60, 100}}, Message{true, 3, {0x80, 60, 0}}));
    EXPECT_EQ(fixture.midi.selectedDestinationID(), 7U);
}

TEST(PerformanceController, choosingTheSameDestinationChangesNothing) {
    ControllerFixture fixture;
    fixture.controller.handleKeyDown(U'a');
    fixture.takeSent();
    fixture.controller.selectDestination(0);
    EXPECT_THAT(fixture.takeSent(), IsEmpty());
}

} // namespace
} // namespace tavro
