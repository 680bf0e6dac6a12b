#include "Check.h"
#include "Expectations.h"
#include "Instrument.h"

namespace tavro::proof {

namespace {

void notesReachEveryListener() {
    Instrument instrument;
    SequencerPeer first("First");
    SequencerPeer second("Second");
    SequencerPeer stranger("Stranger");
    first.listenTo(instrument.source());
    second.listenTo(instrument.source());
    instrument.noteOn(60);
    instrument.noteOff(60);
    const std::vector<Bytes> expected{{0x90, 60, 100}, {0x80, 60, 0}};
    expectEqual(first.take(), expected, "the first listener");
    expectEqual(second.take(), expected, "the second listener");
    expectEqual(stranger.take(), {}, "a program that does not listen");
}

void channelNoteAndVelocityArriveAsSent() {
    Instrument instrument;
    SequencerPeer listener("Listener");
    listener.listenTo(instrument.source());
    std::vector<Bytes> expected;
    for (std::uint8_t channel = 0; channel < 16; ++channel) {
        const auto note = static_cast<std::uint8_t>(channel * 8 + 7);
        for (const auto type : {NoteEvent::EventType::noteOn, NoteEvent::EventType::noteOff}) {
            const auto velocity = type == NoteEvent::EventType::noteOn ? 127 - channel : channel;
            instrument.manager().send({type, note, velocity, channel + 1, U'a'});
            const auto status = type == NoteEvent::EventType::noteOn ? 0x90 : 0x80;
            expected.push_back(
                {static_cast<std::uint8_t>(status | channel), note, static_cast<std::uint8_t>(velocity)});
        }
    }
    expectEqual(listener.take(), expected, "the listener");
}

void panicReachesTheListener() {
    Instrument instrument;
    SequencerPeer listener("Listener");
    listener.listenTo(instrument.source());
    instrument.manager().sendAllNotesOff(3);
    std::vector<Bytes> expected;
    for (std::uint8_t channel = 0; channel < 16; ++channel) {
        const auto status = static_cast<std::uint8_t>(0xB0 | channel);
        expected.push_back({status, 123, 0});
        expected.push_back({status, 120, 0});
    }
    expectEqual(listener.take(), expected, "the listener");
}

void burstKeepsItsOrder() {
    Instrument instrument;
    SequencerPeer listener("Listener");
    listener.listenTo(instrument.source());
    std::vector<Bytes> expected;
    for (int number = 0; number < 500; ++number) {
        instrument.noteOn(number % 128);
        expected.push_back({0x90, static_cast<std::uint8_t>(number % 128), 100});
    }
    expectEqual(listener.take(), expected, "the listener");
    expectEqual(instrument.adapter().droppedMessages(), 0, "dropped messages");
}

void systemExclusiveArrivesWhole() {
    Instrument instrument;
    SequencerPeer listener("Listener");
    listener.listenTo(instrument.source());
    const Bytes message{0xF0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 0xF7};
    instrument.manager().sendBytes(message);
    expectEqual(listener.take(), {message}, "the listener");
}

void sourceIsSeenUnderItsNames() {
    const Instrument instrument;
    const SequencerPeer peer("Peer");
    const auto facts = peer.factsOf(instrument.source());
    expectEqual(facts.client, "TAVRO", "the client's name");
    expectEqual(facts.port, "TAVRO Out", "the port's name");
    expectEqual(facts.capabilities, SND_SEQ_PORT_CAP_READ | SND_SEQ_PORT_CAP_SUBS_READ, "its capabilities");
    expectEqual(facts.type, SND_SEQ_PORT_TYPE_MIDI_GENERIC | SND_SEQ_PORT_TYPE_APPLICATION, "its type");
    expectEqual(const_cast<Instrument&>(instrument).manager().statusText().toStdString(),
                "Virtueller Ausgang aktiv", "the status");
}

void nothingIsLeftWhenItEnds() {
    const SequencerPeer peer("Peer");
    std::uint8_t client = 0;
    {
        const Instrument instrument;
        client = instrument.source().client;
        expect(peer.isThere(client), "the client is not there while the program runs");
    }
    expect(!peer.isThere(client), "the client stays when the program has ended");
}

void listenersAreCounted() {
    Instrument instrument;
    auto& adapter = instrument.adapter();
    const auto waitForCount = [&](std::size_t count) {
        waitFor([&] { return adapter.listeners(instrument.source().number()) == count; },
                std::to_string(count) + " listeners");
    };
    waitForCount(0);
    SequencerPeer first("First");
    first.listenTo(instrument.source());
    waitForCount(1);
    {
        SequencerPeer second("Second");
        second.listenTo(instrument.source());
        waitForCount(2);
        first.stopListeningTo(instrument.source());
        waitForCount(1);
    }
    waitForCount(0);
}

void fullListenerNeitherBlocksNorStealsFromOthers() {
    Instrument instrument;
    SequencerPeer idle("Idle");
    SequencerPeer busy("Busy");
    idle.listenTo(instrument.source());
    busy.listenTo(instrument.source());
    std::vector<Bytes> expected;
    std::vector<Bytes> actual;
    for (int number = 0; number < 3000; ++number) {
        instrument.noteOn(number % 128);
        expected.push_back({0x90, static_cast<std::uint8_t>(number % 128), 100});
        for (auto& message : busy.take()) {
            actual.push_back(std::move(message));
        }
    }
    expectEqual(actual, expected, "the listener that reads");
    expect(instrument.adapter().droppedMessages() > 0, "what the other one lost is not counted");
}

} // namespace

std::vector<Check> sourceChecks() {
    return {
        {"notes_reach_every_listener", notesReachEveryListener},
        {"channel_note_and_velocity_arrive_as_sent", channelNoteAndVelocityArriveAsSent},
        {"panic_reaches_the_listener", panicReachesTheListener},
        {"burst_keeps_its_order", burstKeepsItsOrder},
        {"system_exclusive_arrives_whole", systemExclusiveArrivesWhole},
        {"source_is_seen_under_its_names", sourceIsSeenUnderItsNames},
        {"nothing_is_left_when_it_ends", nothingIsLeftWhenItEnds},
        {"listeners_are_counted", listenersAreCounted},
        {"full_listener_neither_blocks_nor_steals_from_others", fullListenerNeitherBlocksNorStealsFromOthers},
    };
}

} // namespace tavro::proof
