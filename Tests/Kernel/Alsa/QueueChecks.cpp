#include "Check.h"
#include "Expectations.h"
#include "Instrument.h"
#include "QueueState.h"
#include "StrumInstrument.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace tavro::proof {

namespace {

using namespace std::chrono_literals;

const Bytes noteOn{0x90, 60, 100};
const Bytes noteOff{0x80, 60, 0};

/// The adapter alone, with a source and a listener of it.
class Source {
public:
    Source() {
        client_ = adapter.createClient("TAVRO", [] {}).reference;
        reference = adapter.createSource(client_, "TAVRO Out").reference;
        expect(reference != 0, "there is no source");
        listener.listenTo(Instrument::source());
    }

    MidiTicket schedule(const Bytes& message, std::chrono::nanoseconds delay) {
        const auto ticket = adapter.schedule(reference, 0, message, delay);
        expect(ticket.has_value(), "it was not scheduled");
        return *ticket;
    }

    void end() {
        adapter.disposeEndpoint(reference);
        adapter.disposeClient(client_);
    }

private:
    QtMainActor mainActor_;

public:
    alsa::MidiSystemAdapter adapter{mainActor_};
    MidiObjectRef reference = 0;
    SequencerPeer listener{"Listener"};

private:
    MidiObjectRef client_ = 0;
};

void whatFollowsASettledNoteComesAfterIt() {
    Source source;
    // Long before its time, as if the main thread's clock were ahead.
    source.adapter.settle(source.schedule(noteOn, 50ms));
    source.adapter.received(source.reference, noteOff);
    source.adapter.received(source.reference, Bytes{0xB0, 123, 0});
    expectEqual(source.listener.take(), {}, "the listener, before its time");
    std::this_thread::sleep_for(200ms);
    expectEqual(source.listener.take(), {noteOn, noteOff, {0xB0, 123, 0}}, "the listener");
    waitFor([] { return !QueueState::read().isRunning; }, "the queue to rest");
    source.adapter.received(source.reference, noteOn);
    expectEqual(source.listener.take(), {noteOn}, "the listener, afterwards");
}

void endWaitsForWhatWasSettled() {
    Source source;
    source.adapter.settle(source.schedule(noteOn, 50ms));
    source.adapter.received(source.reference, noteOff);
    source.end();
    expectEqual(source.listener.take(), {noteOn, noteOff}, "the listener");
    expectEqual(source.adapter.droppedMessages(), 0, "dropped messages");
}

void endTakesBackWhatWaits() {
    Source source;
    static_cast<void>(source.schedule(noteOn, 50ms));
    static_cast<void>(source.schedule(noteOn, 60ms));
    source.end();
    expectEqual(source.adapter.droppedMessages(), 2, "dropped messages");
    std::this_thread::sleep_for(100ms);
    expectEqual(source.listener.take(), {}, "the listener");
}

void noteThatIsTakenBackTwiceIsTakenBackOnce() {
    Source source;
    const auto ticket = source.schedule(noteOn, 50ms);
    expect(source.adapter.cancel(ticket), "it was not taken back");
    expect(!source.adapter.cancel(ticket), "it was taken back twice");
    expectRest("afterwards");
    const auto late = source.schedule(noteOn, 1ms);
    std::this_thread::sleep_for(50ms);
    expect(!source.adapter.cancel(late), "it was taken back when it had gone out");
    expectEqual(source.listener.take(), {noteOn}, "the listener");
    expectRest("at the end");
}

void otherMessagesAreNotScheduled() {
    Source source;
    for (const auto& message :
         {Bytes{}, Bytes{0x90, 60}, Bytes{0x90, 60, 100, 0x80, 60, 0}, Bytes{0xF0, 1, 0xF7}}) {
        expect(!source.adapter.schedule(source.reference, 0, message, 1ms), "it was scheduled");
    }
    expect(!source.adapter.schedule(source.reference + 1, 0, noteOn, 1ms), "it was scheduled at no port");
    expectRest("afterwards");
}

void moreNotesThanTheQueueTakesAreAllHeard() {
    StrumInstrument instrument;
    SequencerPeer listener("Listener");
    listener.listenTo(Instrument::source());
    std::vector<Bytes> expected;
    constexpr auto count = 300;
    for (auto number = 0; number < count; ++number) {
        const auto note = number % 128;
        const auto channel = number / 128;
        instrument.manager().sendNoteOn({NoteEvent::EventType::noteOn, note, 100, channel + 1, U'a'},
                                        500 + number);
        expected.push_back({static_cast<std::uint8_t>(0x90 | channel), static_cast<std::uint8_t>(note), 100});
    }
    expectEqual(static_cast<std::uint64_t>(QueueState::read().waiting), 2 * alsa::ScheduledEvents::capacity,
                "notes and marks in the queue");
    waitFor([&] { return !instrument.manager().hasPendingNoteOns(); }, "the last note");
    auto heard = listener.take();
    // Those that did not fit come by timers, whose order among the others is not promised.
    std::ranges::sort(heard);
    std::ranges::sort(expected);
    expectEqual(heard, expected, "the listener");
    expectEqual(instrument.adapter().droppedMessages(), 0, "dropped messages");
    waitFor([] { return !QueueState::read().isRunning; }, "the queue to rest");
    expectRest("at the end");
}

void queueRestsWhileNothingWaits() {
    StrumInstrument instrument;
    expectRest("at the start");
    instrument.press(1, 0);
    instrument.release(1);
    expectRest("after a chord at once");
    instrument.press(1, 20);
    expect(QueueState::read().isTicking, "the timer does not tick in a strum");
    instrument.manager().cancelPendingNoteOns();
    expectRest("after the strum was given up");
}

} // namespace

std::vector<Check> queueChecks() {
    return {
        {"what_follows_a_settled_note_comes_after_it", whatFollowsASettledNoteComesAfterIt},
        {"end_waits_for_what_was_settled", endWaitsForWhatWasSettled},
        {"end_takes_back_what_waits", endTakesBackWhatWaits},
        {"note_that_is_taken_back_twice_is_taken_back_once", noteThatIsTakenBackTwiceIsTakenBackOnce},
        {"other_messages_are_not_scheduled", otherMessagesAreNotScheduled},
        {"more_notes_than_the_queue_takes_are_all_heard", moreNotesThanTheQueueTakesAreAllHeard},
        {"queue_rests_while_nothing_waits", queueRestsWhileNothingWaits},
    };
}

} // namespace tavro::proof
