#include "Platform/Linux/Jack/PeriodClock.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace tavro::jack {
namespace {

constexpr std::uint32_t frames = 256;

TEST(PeriodClock, EventOfThePeriodBeforeKeepsItsOffset) {
    constexpr std::uint32_t start = 10 * frames;
    for (std::uint32_t offset = 0; offset < frames; ++offset) {
        EXPECT_EQ(offsetOnePeriodLater(start - frames + offset, start, frames, 0), offset);
    }
}

TEST(PeriodClock, OlderEventComesAtOnce) {
    EXPECT_EQ(offsetOnePeriodLater(1000 - frames - 1, 1000, frames, 0), 0U);
    EXPECT_EQ(offsetOnePeriodLater(1000 - 5 * frames, 1000, frames, 0), 0U);
}

TEST(PeriodClock, EventOfTheRunningPeriodComesLast) {
    EXPECT_EQ(offsetOnePeriodLater(1000, 1000, frames, 0), frames - 1);
    EXPECT_EQ(offsetOnePeriodLater(1000 + 7 * frames, 1000, frames, 0), frames - 1);
}

TEST(PeriodClock, NoEventOvertakesTheOneBeforeIt) {
    EXPECT_EQ(offsetOnePeriodLater(1000 - frames + 20, 1000, frames, 100), 100U);
    EXPECT_EQ(offsetOnePeriodLater(1000 - frames + 100, 1000, frames, 100), 100U);
    EXPECT_EQ(offsetOnePeriodLater(1000 - frames + 101, 1000, frames, 100), 101U);
    EXPECT_EQ(offsetOnePeriodLater(0, 1000, frames, frames - 1), frames - 1);
}

TEST(PeriodClock, CounterMayWrapBetweenStampAndPeriod) {
    constexpr auto last = std::numeric_limits<std::uint32_t>::max();
    // The period begins 16 frames after the wrap, so the stamps of the one before it lie on both sides.
    constexpr std::uint32_t start = 16;
    EXPECT_EQ(offsetOnePeriodLater(last, start, frames, 0), frames - 17);
    EXPECT_EQ(offsetOnePeriodLater(0, start, frames, 0), frames - 16);
    EXPECT_EQ(offsetOnePeriodLater(last - 1000, start, frames, 0), 0U);
    // The period began just before the wrap, and the stamp came just after it.
    EXPECT_EQ(offsetOnePeriodLater(3, last - 3, frames, 0), frames - 1);
}

TEST(PeriodClock, ShortestPeriodHasOnePlace) {
    EXPECT_EQ(offsetOnePeriodLater(999, 1000, 1, 0), 0U);
    EXPECT_EQ(offsetOnePeriodLater(1500, 1000, 1, 0), 0U);
}

TEST(PeriodClock, LateByExactlyOnePeriodWhereverTheStampLies) {
    for (std::uint32_t stamp = 0; stamp < 4 * frames; ++stamp) {
        const auto nextStart = (stamp / frames + 1) * frames;
        EXPECT_EQ(nextStart + offsetOnePeriodLater(stamp, nextStart, frames, 0) - stamp, frames);
    }
}

TEST(PeriodClock, DelaysAreRoundedToTheNearestFrame) {
    using namespace std::chrono_literals;
    EXPECT_EQ(framesIn(5ms, 48000), 240U);
    EXPECT_EQ(framesIn(5ms, 44100), 221U);
    EXPECT_EQ(framesIn(10ms, 44100), 441U);
    EXPECT_EQ(framesIn(1s, 192000), 192000U);
    EXPECT_EQ(framesIn(10us, 48000), 0U);
    EXPECT_EQ(framesIn(11us, 48000), 1U);
    EXPECT_EQ(framesIn(90min + 500ms, 48000), 259'224'000U);
}

TEST(PeriodClock, DelayBeforeNowIsNone) {
    EXPECT_EQ(framesIn(std::chrono::seconds(-3), 48000), 0U);
    EXPECT_EQ(framesIn(std::chrono::nanoseconds::min(), 48000), 0U);
}

TEST(PeriodClock, DelayThatTheCounterCannotTellIsRefused) {
    EXPECT_EQ(framesIn(std::chrono::hours(7), 48000), std::nullopt);
    EXPECT_EQ(framesIn(std::chrono::nanoseconds::max(), 48000), std::nullopt);
    EXPECT_EQ(framesIn(std::chrono::nanoseconds::max(), 1), std::nullopt);
    EXPECT_TRUE(framesIn(std::chrono::hours(6), 48000).has_value());
}

} // namespace
} // namespace tavro::jack
