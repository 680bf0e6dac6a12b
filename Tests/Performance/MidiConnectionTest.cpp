#include "Performance/ControllerFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tavro {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

PerformanceState strummedTriads() {
    PerformanceState state;
    state.scaleName = "Major";
    state.chordMode = ChordMode::triad;
    state.strumMilliseconds = 20;
    return state;
}

class MidiConnection : public testing::Test {
protected:
    void lose() {
        fixture.midiSystem.loseConnection();
        fixture.mainActor.runDue();
    }

    void waitFor(std::chrono::milliseconds time) {
        fixture.mainActor.runUntil(fixture.mainActor.now() + time);
    }

    ControllerFixture fixture{strummedTriads()};
};

TEST_F(MidiConnection, lossIsToldAndNoNoteIsBelievedToSound) {
    fixture.controller.handleKeyDown(U'a');
    fixture.takeSent();
    lose();
    EXPECT_EQ(fixture.status(), "MIDI Verbindung verloren");
    EXPECT_FALSE(fixture.midi.isReady());
    EXPECT_THAT(fixture.controller.activeKeys(), IsEmpty());
    EXPECT_EQ(fixture.chord(), "-");
    EXPECT_THAT(fixture.controller.engine().activeNotesByKey(), IsEmpty());
    EXPECT_FALSE(fixture.midi.hasPendingNoteOns());
    EXPECT_THAT(fixture.takeSent(), IsEmpty());
}

TEST_F(MidiConnection, lossIsTakenUpOutsideTheSystemsOwnCall) {
    fixture.midiSystem.loseConnection();
    EXPECT_TRUE(fixture.midi.isReady());
    fixture.mainActor.runDue();
    EXPECT_FALSE(fixture.midi.isReady());
}

TEST_F(MidiConnection, keysPlayedMeanwhileDoNotHideTheLoss) {
    lose();
    fixture.controller.handleKeyDown(U'a');
    waitFor(100ms);
    fixture.controller.handleKeyUp(U'a');
    EXPECT_THAT(fixture.takeSent(), IsEmpty());
    EXPECT_EQ(fixture.status(), "MIDI Verbindung verloren");
}

TEST_F(MidiConnection, theSystemIsLookedForUntilItReturns) {
    fixture.midiSystem.destinations = {{7, "Synth", {}}};
    fixture.controller.selectDestination(7);
    fixture.midiSystem.clientStatus = -17;
    lose();
    waitFor(5s);
    EXPECT_FALSE(fixture.midi.isReady());
    EXPECT_EQ(fixture.status(), "MIDI Verbindung verloren");
    fixture.midiSystem.clientStatus = 0;
    fixture.midiSystem.calls.clear();
    waitFor(1s);
    EXPECT_TRUE(fixture.midi.isReady());
    EXPECT_EQ(fixture.status(), "Virtueller Ausgang aktiv");
    EXPECT_THAT(fixture.midiSystem.calls, ElementsAre("client TAVRO", "port TAVRO MIDI Out of 4",
                                                      "source TAVRO Out of 4", "route 5 to 7"));
    fixture.controller.handleKeyDown(U'a');
    ASSERT_THAT(fixture.midiSystem.messages, SizeIs(1));
    EXPECT_EQ(fixture.midiSystem.messages[0].endpoint, 7U);
}

TEST_F(MidiConnection, aHalfMadeConnectionIsTakenDownAgain) {
    fixture.midiSystem.sourceStatus = -1;
    lose();
    fixture.midiSystem.calls.clear();
    waitFor(1s);
    EXPECT_THAT(fixture.midiSystem.calls,
                ElementsAre("client TAVRO", "port TAVRO MIDI Out of 4", "source TAVRO Out of 4",
                            "dispose port 5", "dispose client 4"));
}

TEST_F(MidiConnection, listenersFollowTheSystem) {
    EXPECT_EQ(fixture.midi.listeners(), std::nullopt);
    fixture.midiSystem.listenerCount = 2;
    fixture.midiSystem.announceChange();
    fixture.mainActor.runDue();
    EXPECT_EQ(fixture.midi.listeners(), 2U);
}

TEST_F(MidiConnection, lostMessagesAreCountedAndTold) {
    fixture.midiSystem.dropped = 3;
    fixture.controller.handleKeyDown(U'q');
    EXPECT_EQ(fixture.status(), "3 MIDI Nachrichten verloren");
    EXPECT_EQ(fixture.midi.droppedMessages(), 3U);
    fixture.controller.handleKeyUp(U'q');
    EXPECT_NE(fixture.status(), "3 MIDI Nachrichten verloren");
}

class ScheduledStrum : public MidiConnection {
protected:
    ScheduledStrum() { fixture.midiSystem.schedules = true; }
};

TEST_F(ScheduledStrum, isHandedOverAtOnceWithItsTimes) {
    fixture.controller.handleKeyDown(U'a');
    EXPECT_THAT(fixture.takeSent(), ElementsAre("on 60"));
    using Message = headless::MidiSystemAdapter::Message;
    using Scheduled = headless::MidiSystemAdapter::Scheduled;
    EXPECT_THAT(fixture.midiSystem.scheduled,
                ElementsAre(std::pair(1U, Scheduled{Message{true, 3, {0x90, 64, 100}}, 20ms}),
                            std::pair(2U, Scheduled{Message{true, 3, {0x90, 67, 100}}, 40ms})));
}

TEST_F(ScheduledStrum, isOneGesture) {
    using Gesture = std::vector<std::vector<std::uint8_t>>;
    fixture.controller.handleKeyDown(U'a');
    EXPECT_THAT(fixture.midiSystem.gestures,
                ElementsAre(Gesture{{0x90, 60, 100}, {0x90, 64, 100}, {0x90, 67, 100}}));
    waitFor(20ms);
    fixture.controller.handleKeyUp(U'a');
    EXPECT_THAT(fixture.midiSystem.gestures, ElementsAre(SizeIs(3), Gesture{{0x80, 60, 0}, {0x80, 64, 0}}));
}

TEST_F(ScheduledStrum, goesToTheChosenDestination) {
    fixture.midiSystem.destinations = {{7, "Synth", {}}};
    fixture.controller.selectDestination(7);
    fixture.controller.handleKeyDown(U'a');
    EXPECT_EQ(fixture.midiSystem.scheduled.at(1).message.endpoint, 7U);
    EXPECT_FALSE(fixture.midiSystem.scheduled.at(1).message.isFromSource);
}

TEST_F(ScheduledStrum, isSettledAndToldWhenItsTimeHasCome) {
    fixture.controller.handleKeyDown(U'a');
    fixture.takeSent();
    waitFor(20ms);
    EXPECT_THAT(fixture.takeSent(), ElementsAre("on 64"));
    EXPECT_EQ(fixture.status(), "Note On E4");
    waitFor(20ms);
    EXPECT_THAT(fixture.takeSent(), ElementsAre("on 67"));
    EXPECT_THAT(fixture.midiSystem.scheduled, IsEmpty());
}

TEST_F(ScheduledStrum, isTakenBackByARelease) {
    fixture.controller.handleKeyDown(U'a');
    waitFor(20ms);
    fixture.takeSent();
    fixture.controller.handleKeyUp(U'a');
    EXPECT_THAT(fixture.takeSent(), ElementsAre("off 60", "off 64"));
    EXPECT_THAT(fixture.midiSystem.scheduled, IsEmpty());
    EXPECT_FALSE(fixture.mainActor.hasWork());
}

TEST_F(ScheduledStrum, thatTheSystemWasQuickerWithIsEndedLikeAnyNote) {
    fixture.controller.handleKeyDown(U'a');
    fixture.midiSystem.isTooLateToCancel = true;
    fixture.takeSent();
    fixture.controller.handleKeyUp(U'a');
    EXPECT_THAT(fixture.takeSent(), ElementsAre("off 60", "on 64", "off 64", "on 67", "off 67"));
}

TEST_F(ScheduledStrum, thatTheSystemWasQuickerWithIsEndedByAPanicToo) {
    fixture.midi.sendNoteOn({NoteEvent::EventType::noteOn, 50, 100, 1, U'x'}, 20);
    fixture.midiSystem.isTooLateToCancel = true;
    fixture.controller.panic();
    EXPECT_THAT(fixture.takeSent(), ElementsAre("on 50", "off 50"));
}

TEST_F(ScheduledStrum, isReplacedByASecondPress) {
    const NoteEvent event{NoteEvent::EventType::noteOn, 50, 100, 1, U'x'};
    fixture.midi.sendNoteOn(event, 20);
    fixture.midi.sendNoteOn(event, 30);
    EXPECT_THAT(fixture.midiSystem.scheduled, SizeIs(1));
    waitFor(100ms);
    EXPECT_THAT(fixture.takeSent(), ElementsAre("on 50"));
}

} // namespace
} // namespace tavro
