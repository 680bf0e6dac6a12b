#include "Check.h"
#include "Expectations.h"
#include "Instrument.h"
#include "QueueState.h"
#include "StrumInstrument.h"

#include <chrono>
#include <optional>
#include <thread>

namespace tavro::proof {

namespace {

/// Longer than a strum of these checks takes.
constexpr auto aWhile = std::chrono::milliseconds(1200);

void choose(StrumInstrument& instrument, MidiObjectRef number) {
    waitFor(
        [&] {
            for (const auto& destination : instrument.manager().destinations()) {
                if (destination.id == number) {
                    return true;
                }
            }
            return false;
        },
        "the destination in the list");
    instrument.manager().setSelectedDestinationID(number);
}

/// Without anything of the main thread.
void waitForHeard(SequencerPeer& peer, std::vector<Bytes> messages) {
    std::vector<Bytes> heard;
    for (auto turn = 0; turn < 10000 && heard.size() < messages.size(); ++turn) {
        for (auto& message : peer.take()) {
            heard.push_back(std::move(message));
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    expectEqual(heard, messages, "the strum's beginning");
}

void chosenDestinationGetsTheStrumAndNobodyElse() {
    SequencerPeer chosen("Chosen");
    SequencerPeer other("Other");
    SequencerPeer listener("Listener");
    StrumInstrument instrument;
    listener.listenTo(Instrument::source());
    choose(instrument, chosen.number());
    instrument.press(1, 20);
    waitForHeard(chosen, {on(1, 0), on(1, 1), on(1, 2), on(1, 3), on(1, 4)});
    waitFor([&] { return !instrument.manager().hasPendingNoteOns(); }, "the end of the strum");
    expectEqual(other.take(), {}, "another destination");
    expectEqual(listener.take(), {}, "the listener of the source");
    expectEqual(instrument.adapter().droppedMessages(), 0, "dropped messages");
}

void strumDoesNotFollowAChangeOfDestination() {
    SequencerPeer first("First");
    SequencerPeer second("Second");
    StrumInstrument instrument;
    choose(instrument, first.number());
    instrument.pressSlowly(1);
    waitForHeard(first, {on(1, 0), on(1, 1)});
    choose(instrument, second.number());
    expectRest("after the change");
    expectEqual(instrument.adapter().droppedMessages(), 3, "dropped messages");
    instrument.pressSlowly(2);
    std::this_thread::sleep_for(aWhile);
    expectEqual(first.take(), {}, "the first, after the change");
    expectEqual(second.take(), {on(2, 0), on(2, 1), on(2, 2), on(2, 3), on(2, 4)}, "the second");
}

void silencedStrumEndsWhereItSounded() {
    SequencerPeer first("First");
    SequencerPeer second("Second");
    StrumInstrument instrument;
    choose(instrument, first.number());
    instrument.pressSlowly(1);
    waitForHeard(first, {on(1, 0), on(1, 1)});
    // As the controller does it.
    instrument.release(1);
    choose(instrument, second.number());
    std::this_thread::sleep_for(aWhile);
    expectEqual(first.take(), {off(1, 0), off(1, 1)}, "the first");
    expectEqual(second.take(), {}, "the second");
    expectEqual(instrument.adapter().droppedMessages(), 0, "dropped messages");
}

void strumAtTheSourceGoesOnWhenADestinationIsChosen() {
    SequencerPeer listener("Listener");
    SequencerPeer chosen("Chosen");
    StrumInstrument instrument;
    listener.listenTo(Instrument::source());
    instrument.pressSlowly(1);
    choose(instrument, chosen.number());
    waitForHeard(listener, {on(1, 0), on(1, 1), on(1, 2), on(1, 3), on(1, 4)});
    expectEqual(chosen.take(), {}, "the chosen one");
}

void programThatTakesTheAddressHearsNothingOfAStrum() {
    StrumInstrument instrument;
    MidiObjectRef number = 0;
    {
        SequencerPeer chosen("Chosen");
        number = chosen.number();
        choose(instrument, number);
        instrument.pressSlowly(1);
        waitForHeard(chosen, {on(1, 0), on(1, 1)});
    }
    SequencerPeer successor("Successor");
    expectEqual(successor.number(), number, "the address of the next program");
    // The main thread sleeps: it cannot be its doing.
    std::this_thread::sleep_for(aWhile);
    expectEqual(successor.take(), {}, "the successor");
    waitFor([&] { return !instrument.manager().hasPendingNoteOns(); }, "the end of the strum");
    instrument.release(1);
    expectEqual(successor.take(), {}, "the successor, at the release");
    expectRest("at the end");
    expectEqual(instrument.adapter().droppedMessages(), 0, "dropped messages");
}

void portThatTakesTheAddressHearsNothingOfAStrum() {
    SequencerPeer program("Program");
    const auto chosen = program.addPort("chosen");
    StrumInstrument instrument;
    choose(instrument, chosen.number());
    instrument.pressSlowly(1);
    waitForHeard(program, {on(1, 0), on(1, 1)});
    program.removePort(chosen);
    const auto next = program.addPort("next");
    expectEqual(next.number(), chosen.number(), "the address of the next port");
    // The main thread sleeps: it cannot be its doing.
    std::this_thread::sleep_for(aWhile);
    expectEqual(program.take(), {}, "the next port, before the program could hear of it");
    waitFor([&] { return !instrument.manager().hasPendingNoteOns(); }, "the end of the strum");
    instrument.release(1);
    expectEqual(program.take(), {}, "the next port");
    expectRest("at the end");
    expectEqual(instrument.adapter().droppedMessages(), 0, "dropped messages");
}

void destinationThatReturnsGetsStrums() {
    StrumInstrument instrument;
    std::optional<SequencerPeer> chosen("Chosen");
    choose(instrument, chosen->number());
    chosen.emplace("Between");
    chosen.reset();
    chosen.emplace("Chosen");
    choose(instrument, instrument.manager().selectedDestinationID());
    instrument.press(1, 20);
    waitForHeard(*chosen, {on(1, 0), on(1, 1), on(1, 2), on(1, 3), on(1, 4)});
}

void strumsForADestinationThatIsGoneAreRefused() {
    StrumInstrument instrument;
    std::optional<SequencerPeer> chosen("Chosen");
    const auto number = chosen->number();
    choose(instrument, number);
    chosen.reset();
    instrument.pressSlowly(1);
    expectRest("without the destination");
    waitFor([&] { return !instrument.manager().hasPendingNoteOns(); }, "the end of the strum");
    expectEqual(instrument.adapter().droppedMessages(), 0, "dropped messages");
}

void notesOfAStrumThatAFullReceiverLosesAreCounted() {
    SequencerPeer chosen("Chosen");
    StrumInstrument instrument;
    choose(instrument, chosen.number());
    while (instrument.adapter().droppedMessages() == 0) {
        instrument.press(1, 0);
    }
    const auto before = instrument.adapter().droppedMessages();
    instrument.press(1, 10);
    waitFor([&] { return !instrument.manager().hasPendingNoteOns(); }, "the end of the strum");
    expectEqual(instrument.adapter().droppedMessages() - before, 5, "dropped messages");
}

} // namespace

std::vector<Check> strumRouteChecks() {
    return {
        {"chosen_destination_gets_the_strum_and_nobody_else", chosenDestinationGetsTheStrumAndNobodyElse},
        {"strum_does_not_follow_a_change_of_destination", strumDoesNotFollowAChangeOfDestination},
        {"silenced_strum_ends_where_it_sounded", silencedStrumEndsWhereItSounded},
        {"strum_at_the_source_goes_on_when_a_destination_is_chosen",
         strumAtTheSourceGoesOnWhenADestinationIsChosen},
        {"program_that_takes_the_address_hears_nothing_of_a_strum",
         programThatTakesTheAddressHearsNothingOfAStrum},
        {"port_that_takes_the_address_hears_nothing_of_a_strum", portThatTakesTheAddressHearsNothingOfAStrum},
        {"destination_that_returns_gets_strums", destinationThatReturnsGetsStrums},
        {"strums_for_a_destination_that_is_gone_are_refused", strumsForADestinationThatIsGoneAreRefused},
        {"notes_of_a_strum_that_a_full_receiver_loses_are_counted",
         notesOfAStrumThatAFullReceiverLosesAreCounted},
    };
}

} // namespace tavro::proof
