#include "MidiOutput/MidiOutputManager.h"
#include "Concurrency/VirtualMainActor.h"
#include "Platform/Headless/MidiSystemAdapter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

namespace tavro {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using Type = NoteEvent::EventType;
using Bytes = std::vector<std::uint8_t>;

NoteEvent noteOn(std::int64_t note, Character key = U'a', std::int64_t channel = 1) {
    return {Type::noteOn, note, 100, channel, key};
}

NoteEvent noteOff(std::int64_t note, Character key = U'a', std::int64_t channel = 1) {
    return {Type::noteOff, note, 0, channel, key};
}

class MidiOutputManagerTest : public testing::Test {
protected:
    MidiOutputManager& midi() {
        if (!manager_) {
            manager_ = std::make_unique<MidiOutputManager>(system, mainActor);
        }
        return *manager_;
    }

    void destroyManager() { manager_.reset(); }

    std::vector<Bytes> sent() {
        std::vector<Bytes> bytes;
        for (const auto& message : system.messages) {
            bytes.push_back(message.bytes);
        }
        return bytes;
    }

    std::string status() { return midi().statusText().toStdString(); }

    headless::MidiSystemAdapter system;
    VirtualMainActor mainActor;

private:
    std::unique_ptr<MidiOutputManager> manager_;
};

TEST_F(MidiOutputManagerTest, setsUpClientPortAndSourceInThisOrder) {
    EXPECT_EQ(status(), "Virtueller Ausgang aktiv");
    EXPECT_THAT(system.calls,
                ElementsAre("client TAVRO", "port TAVRO MIDI Out of 1", "source TAVRO Out of 1"));
}

TEST_F(MidiOutputManagerTest, stopsAtAClientThatFails) {
    system.clientStatus = -10830;
    EXPECT_EQ(status(), "MIDI Client Fehler -10830");
    EXPECT_THAT(system.calls, ElementsAre("client TAVRO"));
    midi().send(noteOn(60));
    EXPECT_THAT(system.messages, IsEmpty());
    destroyManager();
    EXPECT_THAT(system.calls, ElementsAre("client TAVRO"));
}

TEST_F(MidiOutputManagerTest, looksEverySecondForASystemThatMayCome) {
    system.clientStatus = -17;
    system.comesLater = true;
    EXPECT_EQ(status(), "MIDI Client Fehler -17");
    // Nothing was sent, and the failure is what there is to tell.
    midi().send(noteOn(60));
    midi().sendAllNotesOff(1);
    mainActor.runUntil(2500ms);
    EXPECT_EQ(status(), "MIDI Client Fehler -17");
    EXPECT_THAT(system.calls, ElementsAre("client TAVRO", "client TAVRO", "client TAVRO"));
    EXPECT_FALSE(midi().isReady());
    system.clientStatus = 0;
    system.destinations = {{9, "Synth", "in"}};
    mainActor.runUntil(3s);
    EXPECT_EQ(status(), "Virtueller Ausgang aktiv");
    EXPECT_TRUE(midi().isReady());
    EXPECT_EQ(midi().destinations().size(), 1U);
    midi().send(noteOn(60));
    EXPECT_EQ(sent().size(), 1U);
    mainActor.runUntil(10s);
    EXPECT_EQ(system.calls.size(), 6U);
}

TEST_F(MidiOutputManagerTest, doesNotLookForASystemThatNeverComesLater) {
    system.clientStatus = -10830;
    static_cast<void>(midi());
    mainActor.runUntil(10s);
    EXPECT_THAT(system.calls, ElementsAre("client TAVRO"));
}

TEST_F(MidiOutputManagerTest, tellsNoPanicWhileTheSystemIsGone) {
    static_cast<void>(midi());
    system.loseConnection();
    mainActor.runDue();
    system.clientStatus = -17;
    midi().sendAllNotesOff(1);
    EXPECT_EQ(status(), "MIDI Verbindung verloren");
}

class SeveralSystems : public testing::Test {
protected:
    SeveralSystems() {
        for (auto* system : {&first, &second}) {
            system->clientStatus = -2;
            system->comesLater = true;
        }
    }

    MidiOutputManager& midi() {
        if (!manager) {
            manager.emplace(std::vector<MidiSystem*>{&first, &second}, mainActor);
        }
        return *manager;
    }

    void passASecond() { mainActor.runUntil(mainActor.now() + 1s); }

    headless::MidiSystemAdapter first;
    headless::MidiSystemAdapter second;
    VirtualMainActor mainActor;
    std::optional<MidiOutputManager> manager;
};

TEST_F(SeveralSystems, theFirstThatCanBeUsedPlays) {
    first.clientStatus = 0;
    EXPECT_EQ(&midi().system(), &first);
    EXPECT_THAT(second.calls, IsEmpty());
    EXPECT_THAT(midi().clientFailures(), IsEmpty());
}

TEST_F(SeveralSystems, theNextOnePlaysWhereTheFirstCannot) {
    second.clientStatus = 0;
    EXPECT_EQ(&midi().system(), &second);
    EXPECT_THAT(midi().clientFailures(), ElementsAre(-2));
    EXPECT_TRUE(midi().hasClient());
}

TEST_F(SeveralSystems, whicheverComesFirstPlays) {
    second.clientStatus = -17;
    EXPECT_EQ(midi().statusText(), QStringLiteral("MIDI Client Fehler -17"));
    EXPECT_THAT(midi().clientFailures(), ElementsAre(-2, -17));
    first.clientStatus = 0;
    passASecond();
    EXPECT_EQ(&midi().system(), &first);
    EXPECT_EQ(midi().statusText(), QStringLiteral("Virtueller Ausgang aktiv"));
}

TEST_F(SeveralSystems, aDestinationIsChosenInOneSystemAlone) {
    second.clientStatus = 0;
    midi().setSelectedDestinationID(9);
    second.clientStatus = -17;
    second.loseConnection();
    mainActor.runDue();
    passASecond();
    EXPECT_EQ(midi().selectedDestinationID(), 9U);
    first.clientStatus = 0;
    passASecond();
    // The number would be that of another port there.
    EXPECT_EQ(midi().selectedDestinationID(), 0U);
}

TEST_F(SeveralSystems, aDestinationStaysWhenItsSystemReturns) {
    second.clientStatus = 0;
    midi().setSelectedDestinationID(9);
    second.loseConnection();
    mainActor.runDue();
    passASecond();
    EXPECT_EQ(midi().selectedDestinationID(), 9U);
    EXPECT_EQ(second.calls.back(), "route 5 to 9");
}

TEST_F(SeveralSystems, othersTakeOverAndWhatTheFormerTellsIsNotHeard) {
    first.clientStatus = 0;
    static_cast<void>(midi());
    first.loseConnection();
    second.clientStatus = 0;
    midi().setSystems({&second});
    mainActor.runDue();
    EXPECT_EQ(first.calls.back(), "dispose client 1");
    EXPECT_EQ(midi().statusText(), QStringLiteral("Virtueller Ausgang aktiv"));
    EXPECT_EQ(&midi().system(), &second);
}

TEST_F(MidiOutputManagerTest, stopsAtAPortThatFails) {
    system.portStatus = 7;
    EXPECT_EQ(status(), "MIDI Port Fehler 7");
    midi().setSelectedDestinationID(9);
    midi().send(noteOn(60));
    EXPECT_THAT(system.messages, IsEmpty());
    destroyManager();
    EXPECT_THAT(system.calls, ElementsAre("client TAVRO", "port TAVRO MIDI Out of 1", "dispose client 1"));
}

TEST_F(MidiOutputManagerTest, stopsAtASourceThatFails) {
    system.sourceStatus = -1;
    EXPECT_EQ(status(), "Virtueller Ausgang Fehler -1");
    midi().send(noteOn(60));
    EXPECT_THAT(system.messages, IsEmpty());
}

TEST_F(MidiOutputManagerTest, stillSendsToDestinationsWithoutASource) {
    system.sourceStatus = -1;
    system.destinations = {{7, "Synth", "port"}};
    midi().setSelectedDestinationID(7);
    midi().send(noteOn(60));
    EXPECT_THAT(sent(), ElementsAre(Bytes{0x90, 60, 100}));
}

TEST_F(MidiOutputManagerTest, disposesPortThenSourceThenClient) {
    (void)midi();
    system.calls.clear();
    destroyManager();
    EXPECT_THAT(system.calls, ElementsAre("dispose port 2", "dispose source 3", "dispose client 1"));
}

TEST_F(MidiOutputManagerTest, namesDestinationsAsWellAsItCan) {
    system.destinations = {{7, "Display", "Plain"}, {0, "Gone", "Gone"}, {8, {}, "Plain"}, {1234, {}, {}}};
    EXPECT_THAT(midi().destinations(), ElementsAre(MidiDestination{7, "Display"}, MidiDestination{8, "Plain"},
                                                   MidiDestination{1234, "MIDI Output 1234"}));
}

TEST_F(MidiOutputManagerTest, followsTheSystemFromTheMainActor) {
    EXPECT_THAT(midi().destinations(), IsEmpty());
    int changes = 0;
    QObject::connect(&midi(), &MidiOutputManager::destinationsChanged, [&changes] { ++changes; });
    system.destinations = {{7, "Synth", {}}};
    system.announceChange();
    EXPECT_THAT(midi().destinations(), IsEmpty());
    mainActor.runDue();
    EXPECT_THAT(midi().destinations(), ElementsAre(MidiDestination{7, "Synth"}));
    EXPECT_EQ(changes, 1);
}

TEST_F(MidiOutputManagerTest, mayBeGoneWhenAChangeArrives) {
    (void)midi();
    system.announceChange();
    destroyManager();
    EXPECT_TRUE(mainActor.hasWork());
    mainActor.runDue();
    EXPECT_FALSE(mainActor.hasWork());
}

TEST_F(MidiOutputManagerTest, keepsTheChoiceOfADestinationThatDisappears) {
    system.destinations = {{7, "Synth", {}}};
    midi().setSelectedDestinationID(7);
    system.destinations.clear();
    system.announceChange();
    mainActor.runDue();
    EXPECT_THAT(midi().destinations(), IsEmpty());
    EXPECT_EQ(midi().selectedDestinationID(), 7U);
    midi().send(noteOn(60));
    EXPECT_THAT(system.messages,
                ElementsAre(headless::MidiSystemAdapter::Message{false, 7, {0x90, 60, 100}}));
}

TEST_F(MidiOutputManagerTest, sendsToExactlyOnePlace) {
    system.destinations = {{7, "Synth", {}}};
    midi().send(noteOn(60));
    midi().setSelectedDestinationID(7);
    midi().send(noteOn(61));
    midi().setSelectedDestinationID(0);
    midi().send(noteOn(62));
    using Message = headless::MidiSystemAdapter::Message;
    EXPECT_THAT(system.messages,
                ElementsAre(Message{true, 3, {0x90, 60, 100}}, Message{false, 7, {0x90, 61, 100}},
                            Message{true, 3, {0x90, 62, 100}}));
}

TEST_F(MidiOutputManagerTest, preparesTheRouteWhenADestinationIsChosen) {
    (void)midi();
    system.calls.clear();
    midi().setSelectedDestinationID(7);
    midi().setSelectedDestinationID(7);
    midi().setSelectedDestinationID(0);
    EXPECT_THAT(system.calls, ElementsAre("route 2 to 7", "route 2 to 0"));
}

TEST_F(MidiOutputManagerTest, clampsWhatMidiCannotCarry) {
    midi().send({Type::noteOn, 130, -5, 0, U'a'});
    midi().send({Type::noteOn, -1, 300, 17, U'a'});
    midi().send({Type::noteOff, 64, 65, -3, U'a'});
    EXPECT_THAT(sent(), ElementsAre(Bytes{0x90, 127, 0}, Bytes{0x9F, 0, 127}, Bytes{0x80, 64, 65}));
}

TEST_F(MidiOutputManagerTest, tellsTheLastNote) {
    midi().send(noteOn(61));
    EXPECT_EQ(status(), "Note On C#4");
    midi().send(noteOff(61));
    EXPECT_EQ(status(), "Note Off C#4");
    midi().send(noteOn(130));
    EXPECT_EQ(status(), "Note On G9");
}

TEST_F(MidiOutputManagerTest, doesNothingForAnEmptyBatch) {
    midi().send(std::vector<NoteEvent>{}, 30);
    EXPECT_EQ(status(), "Virtueller Ausgang aktiv");
    EXPECT_FALSE(mainActor.hasWork());
}

TEST_F(MidiOutputManagerTest, sendsABatchWithoutStrumAtOnceAndInOrder) {
    midi().send(std::vector{noteOff(50), noteOn(60), noteOn(64)}, 0);
    EXPECT_THAT(sent(), ElementsAre(Bytes{0x80, 50, 0}, Bytes{0x90, 60, 100}, Bytes{0x90, 64, 100}));
    EXPECT_FALSE(midi().hasPendingNoteOns());
}

TEST_F(MidiOutputManagerTest, strums) {
    midi().send(std::vector{noteOn(60), noteOn(64), noteOn(67)}, 30);
    EXPECT_THAT(sent(), ElementsAre(Bytes{0x90, 60, 100}));
    mainActor.runUntil(29ms);
    EXPECT_EQ(sent().size(), 1U);
    mainActor.runUntil(30ms);
    EXPECT_EQ(sent().size(), 2U);
    mainActor.runUntil(60ms);
    EXPECT_THAT(sent(), ElementsAre(Bytes{0x90, 60, 100}, Bytes{0x90, 64, 100}, Bytes{0x90, 67, 100}));
    EXPECT_FALSE(midi().hasPendingNoteOns());
}

TEST_F(MidiOutputManagerTest, neverSendsWhatIsReleasedBeforeItSounds) {
    midi().send(std::vector{noteOn(60), noteOn(64), noteOn(67)}, 30);
    mainActor.runUntil(40ms);
    midi().send(std::vector{noteOff(60), noteOff(64), noteOff(67)}, 30);
    mainActor.runToEnd();
    EXPECT_THAT(sent(), ElementsAre(Bytes{0x90, 60, 100}, Bytes{0x90, 64, 100}, Bytes{0x80, 60, 0},
                                    Bytes{0x80, 64, 0}));
}

TEST_F(MidiOutputManagerTest, aReleaseOfAnotherKeyOrChannelDoesNotCancel) {
    midi().sendNoteOn(noteOn(60), 20);
    midi().send(std::vector{noteOff(60, U's'), noteOff(60, U'a', 2)}, 0);
    mainActor.runToEnd();
    EXPECT_THAT(sent(), ElementsAre(Bytes{0x80, 60, 0}, Bytes{0x81, 60, 0}, Bytes{0x90, 60, 100}));
}

TEST_F(MidiOutputManagerTest, aReleaseOfNoKeyCancelsEveryKeysNoteAndIsSent) {
    midi().sendNoteOn(noteOn(60, U'a'), 20);
    midi().sendNoteOn(noteOn(60, U's'), 30);
    midi().sendNoteOn(noteOn(60, U's', 2), 30);
    midi().sendNoteOn(noteOn(61, U's'), 30);
    midi().send(std::vector{noteOff(60, noKey)}, 0);
    mainActor.runToEnd();
    EXPECT_THAT(sent(), ElementsAre(Bytes{0x80, 60, 0}, Bytes{0x91, 60, 100}, Bytes{0x90, 61, 100}));
}

TEST_F(MidiOutputManagerTest, aReleaseFindsANoteThatAnotherKeyStarted) {
    auto release = noteOff(60, U's');
    release.startedBy = U'a';
    midi().sendNoteOn(noteOn(60, U'a'), 20);
    midi().send(std::vector{release}, 0);
    EXPECT_FALSE(midi().hasPendingNoteOns());
    EXPECT_THAT(sent(), IsEmpty());
    midi().send(std::vector{release}, 0);
    EXPECT_THAT(sent(), ElementsAre(Bytes{0x80, 60, 0}));
}

TEST_F(MidiOutputManagerTest, aSecondPressReplacesAPendingNote) {
    midi().sendNoteOn(noteOn(60), 50);
    mainActor.runUntil(40ms);
    midi().sendNoteOn(noteOn(60), 50);
    mainActor.runUntil(89ms);
    EXPECT_THAT(sent(), IsEmpty());
    mainActor.runUntil(90ms);
    EXPECT_THAT(sent(), ElementsAre(Bytes{0x90, 60, 100}));
    EXPECT_FALSE(mainActor.hasWork());
}

TEST_F(MidiOutputManagerTest, pendingNotesEndWithTheManager) {
    midi().sendNoteOn(noteOn(60), 50);
    destroyManager();
    EXPECT_FALSE(mainActor.hasWork());
    mainActor.runToEnd();
    EXPECT_THAT(system.messages, IsEmpty());
}

TEST_F(MidiOutputManagerTest, cancelsWhatIsPending) {
    midi().sendNoteOn(noteOn(60), 50);
    midi().sendNoteOn(noteOn(61), 50);
    midi().cancelPendingNoteOns();
    EXPECT_FALSE(midi().hasPendingNoteOns());
    mainActor.runToEnd();
    EXPECT_THAT(system.messages, IsEmpty());
}

TEST_F(MidiOutputManagerTest, panicSilencesAllChannelsInOrder) {
    midi().sendNoteOn(noteOn(60), 50);
    midi().sendAllNotesOff(5);
    mainActor.runToEnd();
    std::vector<Bytes> expected;
    for (std::uint8_t channel = 0; channel < 16; ++channel) {
        const auto status = static_cast<std::uint8_t>(0xB0 + channel);
        expected.push_back({status, 123, 0});
        expected.push_back({status, 120, 0});
    }
    EXPECT_EQ(sent(), expected);
    EXPECT_EQ(status(), "Panic gesendet");
}

TEST_F(MidiOutputManagerTest, panicGoesToTheChosenDestination) {
    midi().setSelectedDestinationID(7);
    midi().sendAllNotesOff(1);
    EXPECT_EQ(system.messages.size(), 32U);
    EXPECT_THAT(system.messages, testing::Each(testing::Field(&headless::MidiSystemAdapter::Message::endpoint,
                                                              MidiObjectRef{7})));
}

} // namespace
} // namespace tavro
