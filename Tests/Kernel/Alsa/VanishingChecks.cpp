#include "Check.h"
#include "Expectations.h"
#include "Instrument.h"

#include <optional>

namespace tavro::proof {

namespace {

/// A destination that was chosen, plays a note and goes; a listener and a bystander look on.
class Vanishing {
public:
    explicit Vanishing(const std::string& name) {
        chosen_.emplace(name);
        number_ = chosen_->number();
        listener_.listenTo(instrument_.source());
        waitFor([&] { return instrument_.listed(number_) != nullptr; }, "the destination in the list");
        instrument_.manager().setSelectedDestinationID(number_);
        instrument_.noteOn(60);
        expectEqual(chosen_->take(), {{0x90, 60, 100}}, "the destination before it goes");
        chosen_.reset();
    }

    [[nodiscard]] Instrument& instrument() { return instrument_; }

    [[nodiscard]] MidiObjectRef number() const { return number_; }

    /// Someone who comes to the very address that was left.
    [[nodiscard]] SequencerPeer successor(const std::string& name) const {
        SequencerPeer peer(name);
        expectEqual(peer.number(), number_, "the address of the next program");
        return peer;
    }

    void play(int note) {
        instrument_.noteOn(note);
        instrument_.noteOff(note);
    }

    void expectNobodyHeard() {
        expectEqual(listener_.take(), {}, "the listener of the source");
        expectEqual(bystander_.take(), {}, "another destination");
    }

private:
    Instrument instrument_;
    SequencerPeer listener_{"Listener"};
    SequencerPeer bystander_{"Bystander"};
    std::optional<SequencerPeer> chosen_;
    MidiObjectRef number_ = 0;
};

void notesForOneThatHasGoneGoNowhere() {
    Vanishing vanishing("Chosen");
    auto& instrument = vanishing.instrument();
    // Before the program could hear of it, and after.
    instrument.noteOff(60);
    vanishing.play(61);
    waitFor([&] { return instrument.listed(vanishing.number()) == nullptr; }, "it to leave the list");
    vanishing.play(62);
    vanishing.expectNobodyHeard();
    // The user has chosen it and sees that it has gone; that is no loss to be alarmed about.
    expectEqual(instrument.adapter().droppedMessages(), 0, "dropped messages");
}

void choiceStays() {
    Vanishing vanishing("Chosen");
    auto& instrument = vanishing.instrument();
    waitFor([&] { return instrument.listed(vanishing.number()) == nullptr; }, "it to leave the list");
    expectEqual(instrument.manager().selectedDestinationID(), vanishing.number(), "the choice");
    expectEqual(instrument.adapter().displayName(vanishing.number()).value_or("nothing"), "Chosen in",
                "the name it still has");
}

void panicWithoutTheDestinationIsHarmless() {
    Vanishing vanishing("Chosen");
    vanishing.instrument().manager().sendAllNotesOff(1);
    vanishing.expectNobodyHeard();
    vanishing.instrument().manager().setSelectedDestinationID(0);
    SequencerPeer listener("Late");
    listener.listenTo(vanishing.instrument().source());
    vanishing.instrument().noteOn(63);
    expectEqual(listener.take(), {{0x90, 63, 100}}, "the source afterwards");
}

void programThatTakesTheAddressHearsNothing() {
    Vanishing vanishing("Chosen");
    auto& instrument = vanishing.instrument();
    auto successor = vanishing.successor("Successor");
    vanishing.play(61);
    expectEqual(successor.take(), {}, "the successor, before the program could hear of it");
    waitFor([&] { return instrument.numberOf("Successor in") != 0; }, "the successor in the list");
    const auto number = instrument.numberOf("Successor in");
    expect(number != vanishing.number(), "the successor has the number of the one before");
    expect(instrument.listed(vanishing.number()) == nullptr, "the one before is still listed");
    vanishing.play(62);
    expectEqual(successor.take(), {}, "the successor, once it is listed");

    instrument.manager().setSelectedDestinationID(number);
    instrument.noteOn(63);
    expectEqual(successor.take(), {{0x90, 63, 100}}, "the successor, once it is chosen");
    vanishing.expectNobodyHeard();
}

void portThatTakesTheAddressHearsNothing() {
    SequencerPeer program("Program");
    Instrument instrument;
    const auto chosen = program.addPort("chosen");
    waitFor([&] { return instrument.listed(chosen.number()) != nullptr; }, "the port in the list");
    instrument.manager().setSelectedDestinationID(chosen.number());
    instrument.noteOn(60);
    expectEqual(program.take(), {{0x90, 60, 100}}, "the port before it goes");
    program.removePort(chosen);
    const auto next = program.addPort("next");
    expectEqual(next.number(), chosen.number(), "the address of the next port");
    instrument.noteOff(60);
    waitFor([&] { return instrument.numberOf("Program next") != 0; }, "the next port in the list");
    instrument.noteOn(61);
    expectEqual(program.take(), {}, "the next port");
}

void oneThatReturnsIsStillChosen() {
    Vanishing vanishing("Chosen");
    auto& instrument = vanishing.instrument();
    {
        const auto successor = vanishing.successor("Successor");
        waitFor([&] { return instrument.numberOf("Successor in") != 0; }, "the successor in the list");
    }
    auto returned = vanishing.successor("Chosen");
    waitFor([&] { return instrument.numberOf("Chosen in") == vanishing.number(); }, "its return to the list");
    instrument.noteOn(61);
    expectEqual(returned.take(), {{0x90, 61, 100}}, "the one that has returned");
    vanishing.expectNobodyHeard();
}

void addressTakenWhileNoticesWereLostIsNotMistaken() {
    Vanishing vanishing("Chosen");
    auto successor = vanishing.successor("Successor");
    for (int round = 0; round < 1500; ++round) {
        successor.removePort(successor.addPort("fleeting"));
    }
    vanishing.play(61);
    waitFor([&] { return vanishing.instrument().numberOf("Successor in") != 0; },
            "the successor in the list");
    vanishing.play(62);
    expectEqual(successor.take(), {}, "the successor");
    vanishing.expectNobodyHeard();
}

} // namespace

std::vector<Check> vanishingChecks() {
    return {
        {"notes_for_one_that_has_gone_go_nowhere", notesForOneThatHasGoneGoNowhere},
        {"choice_stays", choiceStays},
        {"panic_without_the_destination_is_harmless", panicWithoutTheDestinationIsHarmless},
        {"program_that_takes_the_address_hears_nothing", programThatTakesTheAddressHearsNothing},
        {"port_that_takes_the_address_hears_nothing", portThatTakesTheAddressHearsNothing},
        {"one_that_returns_is_still_chosen", oneThatReturnsIsStillChosen},
        {"address_taken_while_notices_were_lost_is_not_mistaken",
         addressTakenWhileNoticesWereLostIsNotMistaken},
    };
}

} // namespace tavro::proof
