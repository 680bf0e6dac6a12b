#include "Platform/Linux/Jack/MessageHandover.h"
#include "Platform/Linux/Jack/MessageMerge.h"
#include "Platform/Linux/Jack/RecordedPeriods.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <deque>
#include <limits>
#include <optional>
#include <thread>
#include <vector>

namespace tavro::jack {
namespace {

constexpr std::uint32_t frames = 256;
constexpr std::uint32_t start = 10 * frames;

class MessageMergeTest : public testing::Test {
protected:
    /// A message that is due at this stamp and has no gesture.
    MidiTicket schedule(std::uint32_t stamp, std::uint8_t value, std::uint16_t port = 0) {
        const auto ticket = scheduled.add(stamp, port, Bytes{value});
        EXPECT_TRUE(ticket.has_value());
        scheduled.start(ticket.value_or(0), 0);
        return ticket.value_or(0);
    }

    void send(std::uint32_t stamp, std::uint8_t value, std::uint16_t port = 0) {
        handover.begin(stamp);
        EXPECT_TRUE(handover.send(port, Bytes{value}));
        handover.end();
    }

    Events fill(std::uint32_t periodStart = start) {
        target.events.clear();
        lost += merge.fill(periodStart, frames, target);
        return target.events;
    }

    MessageRing ring{4096};
    ScheduledMessages scheduled;
    MessageHandover handover{ring, scheduled};
    MessageMerge merge{ring, scheduled};
    RecordedPeriods target;
    std::size_t lost = 0;
};

TEST_F(MessageMergeTest, EveryScheduledMessageComesExactlyOnePeriodAfterItsStamp) {
    for (std::uint32_t number = 0; number < 100; ++number) {
        schedule(start + 37 * number, static_cast<std::uint8_t>(number));
    }
    std::uint32_t found = 0;
    for (auto periodStart = start; found < 100 && periodStart < 100 * frames; periodStart += frames) {
        for (const auto& event : fill(periodStart)) {
            ASSERT_EQ(event.bytes, Bytes{static_cast<std::uint8_t>(found)});
            ASSERT_EQ(periodStart + event.offset, start + 37 * found + frames);
            ++found;
        }
    }
    EXPECT_EQ(found, 100U);
}

TEST_F(MessageMergeTest, MessageOfTheRunningPeriodWaits) {
    schedule(start, 1);
    schedule(start - 1, 2);
    EXPECT_EQ(fill(), (Events{{0, frames - 1, {2}}}));
    EXPECT_EQ(fill(start + frames), (Events{{0, 0, {1}}}));
}

TEST_F(MessageMergeTest, SentAndScheduledComeInTheOrderOfTheirStamps) {
    schedule(start - 50, 3);
    schedule(start - 200, 1);
    send(start - 100, 2);
    send(start - 10, 4);
    EXPECT_EQ(fill(), (Events{{0, 56, {1}}, {0, 156, {2}}, {0, 206, {3}}, {0, 246, {4}}}));
}

TEST_F(MessageMergeTest, OfEqualStampsTheScheduledOneComesFirst) {
    send(start - 100, 2);
    schedule(start - 100, 1);
    EXPECT_EQ(fill(), (Events{{0, 156, {1}}, {0, 156, {2}}}));
}

TEST_F(MessageMergeTest, MessageSentInTheRunningPeriodPullsNothingWithIt) {
    schedule(start + 5, 1);
    schedule(start + 20, 3);
    send(start + 10, 2);
    EXPECT_EQ(fill(), (Events{{0, frames - 1, {2}}}));
    EXPECT_EQ(fill(start + frames), (Events{{0, 5, {1}}, {0, 20, {3}}}));
}

TEST_F(MessageMergeTest, WhatIsSentAfterSettlingComesAfterTheSettledMessage) {
    // The clock of the one who settles is ahead of the frames.
    scheduled.settle(schedule(start + frames + 7, 1));
    send(start - 10, 2);
    send(start - 9, 3);
    schedule(start - 30, 4);
    EXPECT_EQ(fill(), (Events{{0, frames - 30, {4}}}));
    EXPECT_EQ(fill(start + frames), Events{});
    EXPECT_EQ(fill(start + 2 * frames), (Events{{0, 7, {1}}, {0, 7, {2}}, {0, 7, {3}}}));
}

TEST_F(MessageMergeTest, SettledMessageThatWasPlayedHoldsNothingUp) {
    scheduled.settle(schedule(start - 10, 1));
    send(start - 100, 2);
    // Taken between the two.
    EXPECT_EQ(scheduled.unorderedSettled(), std::nullopt);
    EXPECT_EQ(fill(), (Events{{0, 246, {1}}, {0, 246, {2}}}));
    send(start + 1, 3);
    EXPECT_EQ(fill(start + frames), (Events{{0, 1, {3}}}));
}

TEST_F(MessageMergeTest, CancelledMessageIsNotWritten) {
    const auto ticket = schedule(start - 100, 1);
    schedule(start - 50, 2);
    EXPECT_TRUE(scheduled.cancel(ticket));
    EXPECT_EQ(fill(), (Events{{0, 206, {2}}}));
}

TEST_F(MessageMergeTest, LateMessagesComeAtOnce) {
    schedule(start - 5 * frames, 1);
    schedule(start - 2 * frames, 2);
    send(start - frames - 1, 3);
    EXPECT_EQ(fill(), (Events{{0, 0, {1}}, {0, 0, {2}}, {0, 0, {3}}}));
}

TEST_F(MessageMergeTest, CounterMayWrapInsideThePeriod) {
    const std::uint32_t afterWrap = 16;
    schedule(afterWrap - 1, 3);
    schedule(afterWrap - 20, 1);
    send(0, 2);
    schedule(afterWrap, 4);
    EXPECT_EQ(fill(afterWrap), (Events{{0, 236, {1}}, {0, 240, {2}}, {0, 255, {3}}}));
    EXPECT_EQ(fill(afterWrap + frames), (Events{{0, 0, {4}}}));
}

TEST_F(MessageMergeTest, PortsHaveTheirOwnOffsets) {
    schedule(start - 10, 1, 0);
    send(start - 100, 2, 1);
    // The stamps of what is sent follow the clock, which may step back a little.
    send(start - 200, 3, 1);
    schedule(start - 20, 4, 0);
    EXPECT_EQ(fill(), (Events{{1, 156, {2}}, {1, 156, {3}}, {0, 236, {4}}, {0, 246, {1}}}));
}

TEST_F(MessageMergeTest, FullPeriodLeavesTheRestInOrder) {
    schedule(start - 100, 1);
    const auto second = schedule(start - 90, 2);
    send(start - 80, 3);
    schedule(start - 70, 4);
    send(start - 60, 5);
    target.room = 1;
    EXPECT_EQ(fill(), (Events{{0, 156, {1}}}));
    target.room = 2;
    EXPECT_EQ(fill(start + frames), (Events{{0, 0, {2}}, {0, 0, {3}}}));
    EXPECT_FALSE(scheduled.cancel(second));
    target.room = 9;
    EXPECT_EQ(fill(start + 2 * frames), (Events{{0, 0, {4}}, {0, 0, {5}}}));
    EXPECT_TRUE(ring.isEmpty());
    EXPECT_EQ(lost, 0U);
}

TEST_F(MessageMergeTest, MessageThatFoundNoPlaceCanStillBeCancelled) {
    const auto ticket = schedule(start - 100, 1);
    target.room = 0;
    EXPECT_EQ(fill(), Events{});
    EXPECT_TRUE(scheduled.cancel(ticket));
    target.room = 9;
    EXPECT_EQ(fill(start + frames), Events{});
}

TEST_F(MessageMergeTest, MessagesForAMissingPortAreCountedAndHoldNothingUp) {
    schedule(start - 100, 1, 1);
    send(start - 90, 2, 1);
    schedule(start - 80, 3, 0);
    send(start - 70, 4, 0);
    target.hasPorts = {true, false};
    EXPECT_EQ(fill(), (Events{{0, 176, {3}}, {0, 186, {4}}}));
    EXPECT_EQ(lost, 2U);
}

TEST_F(MessageMergeTest, TwoThreadsNothingOvertakesASettledMessage) {
    constexpr std::uint8_t noteOn = 1;
    constexpr std::uint8_t noteOff = 2;
    constexpr std::uint32_t count = 4000;
    const auto bytesOf = [](std::uint8_t kind, std::uint32_t number) {
        return Bytes{kind, static_cast<std::uint8_t>(number), static_cast<std::uint8_t>(number >> 8U)};
    };
    std::atomic<std::uint32_t> clock = std::numeric_limits<std::uint32_t>::max() - 100 * frames;
    std::atomic<bool> isOver = false;
    std::thread server([&] {
        const auto runPeriod = [&] { merge.fill(clock.fetch_add(frames) + frames, frames, target); };
        while (!isOver.load()) {
            // Time goes on inside a period too.
            clock.fetch_add(1);
            runPeriod();
            clock.fetch_sub(1);
        }
        while (!ring.isEmpty()) {
            runPeriod();
        }
    });
    std::vector<bool> isCancelled(count);
    for (std::uint32_t number = 0; number < count; ++number) {
        const auto on = bytesOf(noteOn, number);
        std::optional<MidiTicket> ticket;
        while (!ticket) {
            handover.begin(clock.load());
            ticket = handover.schedule(0, on, number % (2 * frames));
            handover.end();
            std::this_thread::yield();
        }
        isCancelled[number] = number % 3 == 0 && scheduled.cancel(*ticket);
        if (number % 3 != 0) {
            scheduled.settle(*ticket);
        }
        if (!isCancelled[number]) {
            auto isSent = false;
            while (!isSent) {
                handover.begin(clock.load());
                isSent = handover.send(0, bytesOf(noteOff, number));
                handover.end();
                std::this_thread::yield();
            }
        }
    }
    isOver.store(true);
    server.join();

    std::vector<std::uint8_t> state(count);
    for (const auto& event : target.events) {
        const std::size_t number = event.bytes[1] + 256U * event.bytes[2];
        // Each goes from nothing to on, and from on to off.
        ASSERT_EQ(state.at(number) + 1, event.bytes[0]) << "number " << number;
        state[number] = event.bytes[0];
    }
    for (std::uint32_t number = 0; number < count; ++number) {
        ASSERT_EQ(state[number], isCancelled[number] ? 0 : noteOff) << number;
    }
}

} // namespace
} // namespace tavro::jack
