#include "Platform/Linux/Guard/GuardWatch.h"

#include <gtest/gtest.h>

namespace tavro::guard {

// Found by name by the printer of test values.
static void PrintTo(const GuardWatch::Due& due, std::ostream* stream) {
    *stream << (due.givesKeyboardBack ? "keyboard " : "") << (due.restoresRepeats ? "repeats " : "")
            << (due.silences ? "silence" : "");
}

namespace {

using namespace std::chrono_literals;
using Due = GuardWatch::Due;

constexpr Due nothing;
constexpr Due keyboard{.givesKeyboardBack = true};
constexpr Due silence{.silences = true};

class GuardWatchTest : public testing::Test {
protected:
    void order(bool main, bool tap) {
        watch.take(GuardOrders{.expectsMain = main, .expectsTap = tap}.text(), now);
    }

    void beat(char part) { watch.take({&part, 1}, now); }

    Due after(std::chrono::milliseconds time) {
        now += time;
        return watch.judge(now);
    }

    GuardWatch watch;
    GuardWatch::Time now{1h};
};

TEST_F(GuardWatchTest, NobodyIsWaitedForAtFirst) {
    EXPECT_EQ(watch.nextJudgement(), std::nullopt);
    EXPECT_EQ(after(1h), nothing);
    beat(message::mainBeat);
    EXPECT_EQ(after(1h), nothing);
}

TEST_F(GuardWatchTest, AStoppedProcessCostsTheKeyboardThenTheNotes) {
    order(true, true);
    EXPECT_EQ(watch.nextJudgement(), now + GuardWatch::tapPatience);
    EXPECT_EQ(after(GuardWatch::tapPatience - 1ms), nothing);
    EXPECT_EQ(after(1ms), keyboard);
    EXPECT_EQ(watch.nextJudgement(), now + GuardWatch::notePatience - GuardWatch::tapPatience);
    EXPECT_EQ(after(GuardWatch::notePatience - GuardWatch::tapPatience), silence);
    EXPECT_EQ(watch.nextJudgement(), std::nullopt);
    EXPECT_EQ(after(1h), nothing);
}

TEST_F(GuardWatchTest, TheMainThreadAloneIsGivenALittleMoreTime) {
    order(true, true);
    beat(message::tapBeat);
    EXPECT_EQ(after(GuardWatch::tapPatience - 1ms), nothing);
    beat(message::tapBeat);
    EXPECT_EQ(after(GuardWatch::mainPatience - GuardWatch::tapPatience), nothing);
    EXPECT_EQ(after(1ms), keyboard);
    EXPECT_EQ(after(GuardWatch::notePatience - GuardWatch::mainPatience), silence);
}

TEST_F(GuardWatchTest, WithoutATapTheMainThreadIsGivenTheSame) {
    order(true, false);
    EXPECT_EQ(watch.nextJudgement(), now + GuardWatch::mainPatience);
    EXPECT_EQ(after(GuardWatch::mainPatience - 1ms), nothing);
    EXPECT_EQ(after(1ms), keyboard);
    EXPECT_EQ(watch.nextJudgement(), now + GuardWatch::notePatience - GuardWatch::mainPatience);
    EXPECT_EQ(after(GuardWatch::notePatience - GuardWatch::mainPatience), silence);
}

TEST_F(GuardWatchTest, BeatsOfBothKeepItWaiting) {
    order(true, true);
    for (auto round = 0; round < 100; ++round) {
        beat(message::mainBeat);
        EXPECT_EQ(after(300ms), nothing);
        beat(message::tapBeat);
        EXPECT_EQ(after(300ms), nothing);
    }
}

TEST_F(GuardWatchTest, TheTapsHangIsNoReasonToSilence) {
    order(true, true);
    auto due = nothing;
    for (auto round = 0; round < 20; ++round) {
        beat(message::mainBeat);
        const auto next = after(100ms);
        due.givesKeyboardBack |= next.givesKeyboardBack;
        due.silences |= next.silences;
    }
    EXPECT_EQ(due, keyboard);
}

TEST_F(GuardWatchTest, EachAbsenceCostsAgain) {
    order(true, false);
    for (auto round = 0; round < 3; ++round) {
        EXPECT_EQ(after(10s), (Due{.givesKeyboardBack = true, .silences = true}));
        EXPECT_EQ(after(10s), nothing);
        beat(message::mainBeat);
        EXPECT_EQ(after(1ms), nothing);
    }
}

TEST_F(GuardWatchTest, WhoIsNoLongerExpectedMayStayAway) {
    order(true, true);
    EXPECT_EQ(after(500ms), nothing);
    order(true, false);
    EXPECT_EQ(after(100ms), nothing);
    order(false, false);
    EXPECT_EQ(watch.nextJudgement(), std::nullopt);
    EXPECT_EQ(after(1h), nothing);
    // And begins anew.
    order(true, true);
    EXPECT_EQ(after(GuardWatch::tapPatience - 1ms), nothing);
    EXPECT_EQ(after(1ms), keyboard);
}

TEST_F(GuardWatchTest, OrdersAloneAreNoBeat) {
    order(true, true);
    EXPECT_EQ(after(600ms), nothing);
    order(true, true);
    EXPECT_EQ(after(100ms), keyboard);
}

TEST_F(GuardWatchTest, WithoutAFarewellTheEndSilences) {
    order(false, false);
    EXPECT_EQ(watch.atEnd(), (Due{.restoresRepeats = true, .silences = true}));
    beat(message::farewell);
    EXPECT_EQ(watch.atEnd(), (Due{.restoresRepeats = true}));
}

TEST_F(GuardWatchTest, RepeatsAreRestoredOnRequest) {
    EXPECT_EQ(watch.take({&message::restoreRepeats, 1}, now), (Due{.restoresRepeats = true}));
    EXPECT_EQ(watch.take("nonsense", now), nothing);
    EXPECT_EQ(watch.take({}, now), nothing);
}

TEST_F(GuardWatchTest, LatestOrdersCount) {
    watch.take(GuardOrders{.connection = 5, .receivers = {"alsa 1:0"}}.text(), now);
    watch.take(GuardOrders{.connection = 6}.text(), now);
    beat(message::mainBeat);
    EXPECT_EQ(watch.orders(), GuardOrders{.connection = 6});
}

} // namespace
} // namespace tavro::guard
