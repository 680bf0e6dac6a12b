#include "Check.h"
#include "Expectations.h"
#include "Instrument.h"

#include <algorithm>

namespace tavro::proof {

namespace {

void kernelsOwnThroughPortIsListed() {
    const Instrument instrument;
    const auto* listed = instrument.listed(14U << 8U);
    expect(listed != nullptr, "Midi Through is not listed");
    expectEqual(listed->name, "Midi Through Port-0", "its name");
}

void listIsInTheSequencersOrder() {
    const SequencerPeer first("Zither");
    const SequencerPeer second("Accordion");
    Instrument instrument;
    std::vector<MidiObjectRef> numbers;
    for (const auto& destination : instrument.manager().destinations()) {
        numbers.push_back(destination.id);
    }
    expect(std::ranges::is_sorted(numbers), "the numbers are not in order");
    expect(instrument.numberOf("Zither in") < instrument.numberOf("Accordion in"), "the names are");
}

void programThatComesIsListedAndOneThatGoesIsNot() {
    Instrument instrument;
    MidiObjectRef number = 0;
    {
        const SequencerPeer peer("Newcomer");
        number = peer.number();
        waitFor([&] { return instrument.numberOf("Newcomer in") == number; }, "the newcomer in the list");
    }
    waitFor([&] { return instrument.listed(number) == nullptr; }, "the newcomer to leave the list");
}

void portThatComesIsListedAndOneThatGoesIsNot() {
    SequencerPeer peer("Peer");
    Instrument instrument;
    const auto port = peer.addPort("late");
    waitFor([&] { return instrument.numberOf("Peer late") == port.number(); }, "the port in the list");
    peer.removePort(port);
    waitFor([&] { return instrument.listed(port.number()) == nullptr; }, "the port to leave the list");
    expect(instrument.listed(peer.number()) != nullptr, "the program's other port has left too");
}

void renamedProgramKeepsItsNumberAndNotes() {
    SequencerPeer peer("Before");
    Instrument instrument;
    instrument.manager().setSelectedDestinationID(peer.number());
    peer.rename("After");
    // Not every kernel announces a new name; it is seen when something else changes.
    const SequencerPeer other("Other");
    waitFor([&] { return instrument.numberOf("After in") == peer.number(); }, "the new name");
    expect(instrument.numberOf("Before in") == 0, "the old name is still listed");
    instrument.noteOn(60);
    expectEqual(peer.take(), {{0x90, 60, 100}}, "the renamed program");
}

void ownPortsAreNeverListed() {
    Instrument instrument;
    Instrument second;
    const SequencerPeer peer("Marker");
    for (auto* each : {&instrument, &second}) {
        waitFor([&] { return each->numberOf("Marker in") != 0; }, "a newer program in the list");
        for (const auto& destination : each->manager().destinations()) {
            const auto client = (destination.id >> 8U) & 0xFFU;
            expect(client != instrument.source().client && client != second.source().client,
                   "listed: " + destination.name);
            expect(client != 0, "the sequencer itself is listed: " + destination.name);
        }
    }
}

void portsThatCannotBeWrittenToByOthersAreNotListed() {
    SequencerPeer peer("Peer", "usable");
    peer.addPort("readable", SND_SEQ_PORT_CAP_READ | SND_SEQ_PORT_CAP_SUBS_READ);
    peer.addPort("unsubscribable", SND_SEQ_PORT_CAP_WRITE);
    peer.addPort("private", SequencerPeer::inputPort | SND_SEQ_PORT_CAP_NO_EXPORT);
    peer.addPort("unused", SequencerPeer::inputPort | (1U << 8U));
    peer.addPort("both", SequencerPeer::inputPort | SND_SEQ_PORT_CAP_READ | SND_SEQ_PORT_CAP_SUBS_READ);
    Instrument instrument;
    std::string names;
    for (const auto& destination : instrument.manager().destinations()) {
        if (destination.name.starts_with("Peer")) {
            names += destination.name + ';';
        }
    }
    expectEqual(names, "Peer usable;Peer both;", "listed");
}

void changesThatCameTooFastAreCaughtUpWith() {
    Instrument instrument;
    SequencerPeer chosen("Chosen");
    waitFor([&] { return instrument.listed(chosen.number()) != nullptr; }, "the chosen one in the list");
    // More notices than the sequencer keeps for a program that does not read meanwhile.
    for (int round = 0; round < 1500; ++round) {
        chosen.removePort(chosen.addPort("fleeting"));
    }
    const SequencerPeer last("Last");
    waitFor([&] { return instrument.numberOf("Last in") == last.number(); }, "the last one in the list");
    expect(instrument.numberOf("Chosen fleeting") == 0, "a port that has gone is listed");
    instrument.manager().setSelectedDestinationID(chosen.number());
    instrument.noteOn(60);
    expectEqual(chosen.take(), {{0x90, 60, 100}}, "one that was there all the time");
}

} // namespace

std::vector<Check> listChecks() {
    return {
        {"kernels_own_through_port_is_listed", kernelsOwnThroughPortIsListed},
        {"list_is_in_the_sequencers_order", listIsInTheSequencersOrder},
        {"program_that_comes_is_listed_and_one_that_goes_is_not",
         programThatComesIsListedAndOneThatGoesIsNot},
        {"port_that_comes_is_listed_and_one_that_goes_is_not", portThatComesIsListedAndOneThatGoesIsNot},
        {"renamed_program_keeps_its_number_and_notes", renamedProgramKeepsItsNumberAndNotes},
        {"own_ports_are_never_listed", ownPortsAreNeverListed},
        {"ports_that_cannot_be_written_to_by_others_are_not_listed",
         portsThatCannotBeWrittenToByOthersAreNotListed},
        {"changes_that_came_too_fast_are_caught_up_with", changesThatCameTooFastAreCaughtUpWith},
    };
}

} // namespace tavro::proof
