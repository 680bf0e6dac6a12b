#include "SimulatedQueue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

namespace tavro::alsa {
namespace {

using namespace std::chrono_literals;
using testing::AnyOf;
using testing::ElementsAre;
using testing::IsEmpty;

/// An event of which only the number matters here.
snd_seq_event_t eventOf(int number) {
    snd_seq_event_t event;
    snd_seq_ev_clear(&event);
    event.data.note.note = static_cast<unsigned char>(number);
    snd_seq_ev_set_subs(&event);
    return event;
}

class Scheduling {
public:
    Scheduling() { queue.scheduled = &events; }

    MidiTicket schedule(int number, std::chrono::nanoseconds delay) {
        const auto ticket = events.schedule(eventOf(number), delay);
        EXPECT_TRUE(ticket.has_value());
        return ticket.value_or(0);
    }

    /// As the adapter does it.
    void send(int number) {
        auto event = eventOf(number);
        if (events.isHolding()) {
            EXPECT_TRUE(events.addBehind(event));
        } else {
            queue.heard.push_back(number);
        }
    }

    /// Everything that is due goes out and is told.
    void runOut() {
        queue.isQuick = [] { return false; };
        for (auto turn = 0; turn < 3; ++turn) {
            queue.runOut();
            queue.read();
        }
    }

    SimulatedQueue queue;
    ScheduledEvents events{queue};
};

/// Plays a scenario once for each way in which the other processor can come between, no more than twice
/// in a scenario, for as long as it likes each time.
template <typename Scenario>
unsigned inEveryOrder(const Scenario& scenario) {
    std::vector<bool> answers;
    unsigned count = 0;
    while (true) {
        std::size_t asked = 0;
        auto interruptions = 0;
        auto isWorking = false;
        Scheduling scheduling;
        scheduling.queue.isQuick = [&] {
            if (!isWorking && interruptions == 2) {
                return false;
            }
            if (asked == answers.size()) {
                answers.push_back(false);
            }
            const auto wasWorking = std::exchange(isWorking, answers[asked++]);
            interruptions += isWorking && !wasWorking ? 1 : 0;
            return isWorking;
        };
        scenario(scheduling);
        ++count;
        answers.resize(asked);
        while (!answers.empty() && answers.back()) {
            answers.pop_back();
        }
        if (answers.empty() || testing::Test::HasFailure()) {
            return count;
        }
        answers.back() = true;
    }
}

void expectRest(const Scheduling& scheduling) {
    EXPECT_TRUE(scheduling.queue.isEmpty());
    EXPECT_FALSE(scheduling.queue.isRunning);
}

TEST(ScheduledEvents, goOutAtTheirTimes) {
    Scheduling with;
    with.schedule(1, 10ms);
    with.schedule(2, 5ms);
    with.queue.advance(5ms);
    with.queue.runOut();
    EXPECT_THAT(with.queue.heard, ElementsAre(2));
    with.queue.advance(5ms);
    with.queue.runOut();
    EXPECT_THAT(with.queue.heard, ElementsAre(2, 1));
}

TEST(ScheduledEvents, areTakenBackBeforeTheirTimes) {
    Scheduling with;
    const auto first = with.schedule(1, 10ms);
    const auto second = with.schedule(2, 10ms);
    EXPECT_TRUE(with.events.cancel(first));
    EXPECT_FALSE(with.events.cancel(first));
    with.queue.advance(10ms);
    with.runOut();
    EXPECT_THAT(with.queue.heard, ElementsAre(2));
    EXPECT_FALSE(with.events.cancel(second));
    with.runOut();
    expectRest(with);
}

TEST(ScheduledEvents, whoseTimeHasJustComeAreEitherTakenBackOrEnded) {
    const auto ways = inEveryOrder([](Scheduling& with) {
        const auto ticket = with.schedule(1, 10ms);
        with.queue.advance(10ms);
        const auto isBack = with.events.cancel(ticket);
        if (!isBack) {
            with.send(2);
        }
        with.runOut();
        if (isBack) {
            EXPECT_THAT(with.queue.heard, IsEmpty());
        } else {
            // In the moment between the mark and the event it cannot be known.
            EXPECT_THAT(with.queue.heard, AnyOf(ElementsAre(1, 2), ElementsAre(2)));
        }
        expectRest(with);
    });

    EXPECT_GT(ways, 10U);
}

TEST(ScheduledEvents, areNeitherLostNorDoubledNorOvertakenOnceSettled) {
    const auto ways = inEveryOrder([](Scheduling& with) {
        const auto ticket = with.schedule(1, 10ms);
        with.queue.advance(10ms);
        with.events.settle(ticket);
        with.send(2);
        with.send(3);
        with.runOut();
        EXPECT_THAT(with.queue.heard, ElementsAre(1, 2, 3));
        expectRest(with);
    });

    EXPECT_GT(ways, 10U);
}

TEST(ScheduledEvents, ofAStrumKeepTheirOrderWhateverComesBetween) {
    const auto ways = inEveryOrder([](Scheduling& with) {
        const auto first = with.schedule(1, 10ms);
        const auto second = with.schedule(2, 10ms);
        with.queue.advance(10ms);
        with.events.settle(first);
        const auto isBack = with.events.cancel(second);
        with.send(11);
        if (!isBack) {
            with.send(12);
        }
        with.runOut();
        if (isBack) {
            EXPECT_THAT(with.queue.heard, ElementsAre(1, 11));
        } else {
            EXPECT_THAT(with.queue.heard, AnyOf(ElementsAre(1, 2, 11, 12), ElementsAre(1, 11, 12)));
        }
        expectRest(with);
    });

    EXPECT_GT(ways, 100U);
}

TEST(ScheduledEvents, thatComeLateHoldWhatFollowsThem) {
    Scheduling with;
    const auto ticket = with.schedule(1, 10ms);
    with.schedule(4, 20ms);
    with.queue.advance(9ms);
    with.events.settle(ticket);
    with.send(2);
    with.send(3);
    EXPECT_THAT(with.queue.heard, IsEmpty());
    EXPECT_FALSE(with.events.cancel(ticket));
    with.queue.advance(1ms);
    with.queue.runOut();
    EXPECT_THAT(with.queue.heard, ElementsAre(1, 2, 3));
    with.send(5);
    EXPECT_THAT(with.queue.heard, ElementsAre(1, 2, 3, 5));
}

TEST(ScheduledEvents, whoseMarksAreLostAreEndedAllTheSame) {
    const auto ways = inEveryOrder([](Scheduling& with) {
        const auto ticket = with.schedule(1, 10ms);
        with.queue.advance(10ms);
        with.queue.read();
        with.queue.loseMarks();
        const auto isBack = with.events.cancel(ticket);
        if (!isBack) {
            with.send(2);
        }
        with.runOut();
        if (isBack) {
            EXPECT_THAT(with.queue.heard, IsEmpty());
        } else {
            EXPECT_THAT(with.queue.heard, AnyOf(ElementsAre(1, 2), ElementsAre(2)));
        }
        expectRest(with);
    });

    EXPECT_GT(ways, 10U);
}

TEST(ScheduledEvents, holdUntilAMarkComesThatIsNotLost) {
    Scheduling with;
    const auto ticket = with.schedule(1, 10ms);
    with.events.settle(ticket);
    with.queue.advance(10ms);
    with.queue.runOut();
    with.queue.loseMarks();
    with.send(2);
    EXPECT_THAT(with.queue.heard, ElementsAre(1, 2));
    with.runOut();
    expectRest(with);
}

TEST(ScheduledEvents, areRefusedWhenTooManyWait) {
    Scheduling with;
    std::vector<MidiTicket> tickets;
    for (std::size_t count = 0; count < ScheduledEvents::capacity; ++count) {
        tickets.push_back(with.schedule(static_cast<int>(count % 128), 10ms));
    }
    EXPECT_FALSE(with.events.schedule(eventOf(1), 10ms));
    EXPECT_TRUE(with.events.cancel(tickets[7]));
    EXPECT_TRUE(with.events.schedule(eventOf(1), 10ms));
    with.queue.advance(10ms);
    with.queue.runOut();
    EXPECT_EQ(with.queue.heard.size(), ScheduledEvents::capacity);
}

TEST(ScheduledEvents, areRefusedWhenThereIsNoRoom) {
    for (const std::size_t room : {0U, 1U}) {
        Scheduling with;
        with.queue.room = room;
        EXPECT_FALSE(with.events.schedule(eventOf(1), 10ms));
        with.runOut();
        expectRest(with);
        EXPECT_THAT(with.queue.heard, IsEmpty());
    }
}

TEST(ScheduledEvents, areRefusedWhenTheQueueDoesNotRun) {
    Scheduling with;
    with.queue.canStart = false;
    EXPECT_FALSE(with.events.schedule(eventOf(1), 10ms));
    with.send(2);
    EXPECT_THAT(with.queue.heard, ElementsAre(2));
}

TEST(ScheduledEvents, holdOnWithoutRoomForAMark) {
    Scheduling with;
    const auto ticket = with.schedule(1, 10ms);
    with.queue.room = 0;
    with.events.settle(ticket);
    auto event = eventOf(2);
    EXPECT_TRUE(with.events.isHolding());
    EXPECT_FALSE(with.events.addBehind(event));
    with.queue.advance(10ms);
    with.queue.runOut();
    with.send(3);
    EXPECT_THAT(with.queue.heard, ElementsAre(1, 3));
    with.runOut();
    expectRest(with);
}

TEST(ScheduledEvents, letTheQueueRunOnlyWhileSomethingWaits) {
    Scheduling with;
    EXPECT_FALSE(with.queue.isRunning);
    const auto first = with.schedule(1, 10ms);
    const auto second = with.schedule(2, 20ms);
    EXPECT_TRUE(with.queue.isRunning);
    EXPECT_TRUE(with.events.cancel(first));
    EXPECT_TRUE(with.queue.isRunning);
    with.queue.advance(20ms);
    with.queue.runOut();
    with.events.settle(second);
    EXPECT_FALSE(with.queue.isRunning);
}

TEST(ScheduledEvents, thatAreGivenUpAreCountedUnlessTheyWentOut) {
    Scheduling with;
    with.schedule(1, 10ms);
    with.schedule(2, 20ms);
    with.schedule(3, 30ms);
    with.queue.advance(10ms);
    with.queue.runOut();
    const auto isNot3 = [](const snd_seq_event_t& event) { return event.data.note.note != 3; };
    EXPECT_EQ(with.events.giveUp(isNot3), 1U);
    with.queue.advance(20ms);
    with.queue.runOut();
    EXPECT_THAT(with.queue.heard, ElementsAre(1, 3));
}

TEST(ScheduledEvents, thatAreSettledAreNotGivenUpButWaitedFor) {
    Scheduling with;
    const auto ticket = with.schedule(1, 10ms);
    with.events.settle(ticket);
    EXPECT_EQ(with.events.giveUp([](const auto& /*event*/) { return true; }), 0U);
    with.queue.advance(10ms);
    with.events.finish();
    EXPECT_THAT(with.queue.heard, ElementsAre(1));
    EXPECT_EQ(with.queue.waits, 1U);
    with.events.finish();
    EXPECT_EQ(with.queue.waits, 1U);
}

TEST(ScheduledEvents, areNotWaitedForWithoutEnd) {
    Scheduling with;
    with.events.settle(with.schedule(1, 10ms));
    with.events.finish();
    EXPECT_THAT(with.queue.heard, IsEmpty());
}

/// One number for each note, so that it is known whose what is.
RC_GTEST_PROP(ScheduledEventsProperties, everyNoteIsHeardOnceOrNeverAndBeforeItsEnd, ()) {
    Scheduling with;
    with.queue.isQuick = [] { return *rc::gen::arbitrary<bool>(); };
    std::map<int, MidiTicket> waiting;
    std::vector<int> settled;
    std::vector<int> takenBack;
    std::vector<int> inDoubt;
    constexpr int end = 100;
    const auto count = *rc::gen::inRange(1, 60);
    for (int step = 0; step < count; ++step) {
        if (const auto what = *rc::gen::inRange(0, 4); what == 0 || waiting.empty()) {
            waiting[step] = with.schedule(step, std::chrono::milliseconds(*rc::gen::inRange(0, 4)));
        } else if (what == 1) {
            with.queue.advance(1ms);
        } else {
            const auto chosenOne =
                std::next(waiting.begin(), *rc::gen::inRange<std::ptrdiff_t>(0, std::ssize(waiting)));
            const auto [note, ticket] = *chosenOne;
            waiting.erase(chosenOne);
            if (what == 2) {
                with.events.settle(ticket);
                settled.push_back(note);
                with.send(note + end);
            } else if (with.events.cancel(ticket)) {
                takenBack.push_back(note);
            } else {
                inDoubt.push_back(note);
                with.send(note + end);
            }
        }
    }
    for (const auto& [note, ticket] : waiting) {
        with.events.settle(ticket);
        settled.push_back(note);
        with.send(note + end);
    }
    with.queue.advance(10ms);
    with.runOut();
    const auto& heard = with.queue.heard;
    const auto times = [&](int number) { return std::ranges::count(heard, number); };
    const auto isEndLast = [&](int note) {
        return times(note) == 0 || std::ranges::find(heard, note) < std::ranges::find(heard, note + end);
    };
    for (const auto note : settled) {
        RC_ASSERT(times(note) == 1);
        RC_ASSERT(times(note + end) == 1);
        RC_ASSERT(isEndLast(note));
    }
    for (const auto note : takenBack) {
        RC_ASSERT(times(note) == 0);
    }
    for (const auto note : inDoubt) {
        RC_ASSERT(times(note) <= 1);
        RC_ASSERT(times(note + end) == 1);
        RC_ASSERT(isEndLast(note));
    }
    RC_ASSERT(with.queue.isEmpty());
    RC_ASSERT(!with.queue.isRunning);
}

} // namespace
} // namespace tavro::alsa
