#include "Check.h"
#include "Expectations.h"
#include "Instrument.h"

namespace tavro::proof {

namespace {

const std::vector<Bytes> oneNote{{0x90, 60, 100}, {0x80, 60, 0}};

void playOneNote(Instrument& instrument) {
    instrument.noteOn(60);
    instrument.noteOff(60);
}

void chosenDestinationGetsNotesAndNobodyElse() {
    SequencerPeer chosen("Chosen");
    SequencerPeer other("Other");
    SequencerPeer listener("Listener");
    Instrument instrument;
    listener.listenTo(instrument.source());
    instrument.manager().setSelectedDestinationID(chosen.number());
    playOneNote(instrument);
    expectEqual(chosen.take(), oneNote, "the chosen one");
    expectEqual(other.take(), {}, "the other one");
    expectEqual(listener.take(), {}, "the listener of the source");

    instrument.manager().setSelectedDestinationID(0);
    playOneNote(instrument);
    expectEqual(chosen.take(), {}, "the one that is not chosen any more");
    expectEqual(listener.take(), oneNote, "the listener of the source");
}

void messagesSentBeforeAChangeOfChoiceGoWhereTheyWereSent() {
    SequencerPeer first("First");
    SequencerPeer second("Second");
    Instrument instrument;
    std::vector<Bytes> toFirst;
    std::vector<Bytes> toSecond;
    for (std::uint8_t note = 0; note < 100; ++note) {
        const auto isFirst = note % 2 == 0;
        instrument.manager().setSelectedDestinationID(isFirst ? first.number() : second.number());
        instrument.noteOn(note);
        (isFirst ? toFirst : toSecond).push_back({0x90, note, 100});
    }
    expectEqual(first.take(), toFirst, "the first");
    expectEqual(second.take(), toSecond, "the second");
}

void everyPortOfAProgramIsADestination() {
    SequencerPeer peer("Peer", "one");
    const auto two = peer.addPort("two");
    Instrument instrument;
    expectEqual(instrument.numberOf("Peer one"), peer.number(), "the number of the first port");
    expectEqual(instrument.numberOf("Peer two"), two.number(), "the number of the second port");
    instrument.manager().setSelectedDestinationID(two.number());
    instrument.noteOn(60);
    const auto messages = peer.takeMessages();
    expectEqual(messages.size(), 1, "messages");
    expectEqual(messages.front().port, two.port, "the port that got it");
}

void twoDestinationsOfOneNameAreToldApart() {
    SequencerPeer first("Synth");
    SequencerPeer second("Synth");
    Instrument instrument;
    for (const auto* peer : {&first, &second}) {
        const auto* listed = instrument.listed(peer->number());
        expect(listed != nullptr, "one of the two is not listed");
        expectEqual(listed->name, "Synth in", "its name");
    }
    instrument.manager().setSelectedDestinationID(second.number());
    playOneNote(instrument);
    expectEqual(first.take(), {}, "the first");
    expectEqual(second.take(), oneNote, "the second");
    instrument.manager().setSelectedDestinationID(first.number());
    playOneNote(instrument);
    expectEqual(first.take(), oneNote, "the first");
    expectEqual(second.take(), {}, "the second");
}

void receiverSeesWhoSends() {
    SequencerPeer chosen("Chosen");
    Instrument instrument;
    instrument.manager().setSelectedDestinationID(chosen.number());
    instrument.noteOn(60);
    const auto messages = chosen.takeMessages();
    expectEqual(messages.size(), 1, "messages");
    const auto sender = chosen.factsOf(messages.front().from);
    expectEqual(sender.client, "TAVRO", "the sender's client");
    expectEqual(sender.port, "TAVRO MIDI Out", "the sender's port");
}

void fullDestinationDropsAndRecovers() {
    SequencerPeer chosen("Chosen");
    Instrument instrument;
    instrument.manager().setSelectedDestinationID(chosen.number());
    constexpr std::uint64_t sent = 3000;
    for (std::uint64_t number = 0; number < sent; ++number) {
        instrument.noteOn(60);
    }
    const auto dropped = instrument.adapter().droppedMessages();
    expect(dropped > 0 && dropped < sent, std::to_string(dropped) + " dropped of " + std::to_string(sent));
    // The sequencer throws away what waits for a program that came too late.
    expectEqual(chosen.take(), {}, "the chosen one, when it reads at last");
    playOneNote(instrument);
    expectEqual(chosen.take(), oneNote, "the chosen one, once it has read");
}

} // namespace

std::vector<Check> destinationChecks() {
    return {
        {"chosen_destination_gets_notes_and_nobody_else", chosenDestinationGetsNotesAndNobodyElse},
        {"messages_before_a_change_of_choice_go_where_they_were_sent",
         messagesSentBeforeAChangeOfChoiceGoWhereTheyWereSent},
        {"every_port_of_a_program_is_a_destination", everyPortOfAProgramIsADestination},
        {"two_destinations_of_one_name_are_told_apart", twoDestinationsOfOneNameAreToldApart},
        {"receiver_sees_who_sends", receiverSeesWhoSends},
        {"full_destination_drops_and_recovers", fullDestinationDropsAndRecovers},
    };
}

} // namespace tavro::proof
