#include "KeyboardInput/KeyTimes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace tavro {
namespace {

TEST(KeyTimes, toldInAnyOrderTellPressesFromRepeats) {
    // Pressed at 10, up at 20; pressed at 30, repeats at 40 and 50, up at 60.
    const auto tell = [](KeyTimes& times, int what) {
        switch (what) {
        case 0:
            return times.addPress(10);
        case 1:
            return times.addRelease(20);
        case 2:
            return times.addPress(30);
        default:
            return times.addRelease(60);
        }
    };
    std::array order{0, 1, 2, 3};
    do {
        KeyTimes times;
        for (const auto what : order) {
            tell(times, what);
        }
        EXPECT_TRUE(times.startsPress(9));
        EXPECT_FALSE(times.startsPress(15));
        EXPECT_FALSE(times.startsPress(20));
        EXPECT_TRUE(times.startsPress(25));
        EXPECT_FALSE(times.startsPress(40));
        EXPECT_FALSE(times.startsPress(50));
        EXPECT_TRUE(times.startsPress(61));
    } while (std::ranges::next_permutation(order).found);
}

TEST(KeyTimes, aKeyMayGoDownAndUpInOneMillisecond) {
    KeyTimes times;
    times.addPress(10);
    EXPECT_FALSE(times.isOver(10));
    times.addRelease(10);
    EXPECT_TRUE(times.isOver(10));
    EXPECT_FALSE(times.startsPress(10));
    EXPECT_TRUE(times.startsPress(11));
    EXPECT_FALSE(times.isOver(11));
}

TEST(KeyTimes, aReleaseEndsWhatWentDownBefore) {
    KeyTimes times;
    times.addRelease(20);
    EXPECT_TRUE(times.isOver(15));
    EXPECT_FALSE(times.isOver(21));
    EXPECT_TRUE(times.wentUpBetween(15, 21));
    EXPECT_TRUE(times.wentUpBetween(20, 21));
    EXPECT_FALSE(times.wentUpBetween(15, 20));
    EXPECT_FALSE(times.wentUpBetween(21, 25));
}

TEST(KeyTimes, noTimeIsLeftOut) {
    KeyTimes times;
    times.addPress(0);
    times.addRelease(0);
    EXPECT_TRUE(times.startsPress(1));
    EXPECT_FALSE(times.isOver(0));
}

TEST(KeyTimes, theClockRunsOver) {
    KeyTimes times;
    times.addPress(0xFFFFFFF0);
    EXPECT_FALSE(times.startsPress(5));
    times.addRelease(2);
    EXPECT_TRUE(times.isOver(0xFFFFFFF0));
    EXPECT_TRUE(times.startsPress(5));
    // A release of weeks ago is not one that is still to come.
    EXPECT_FALSE(times.isOver(2 + (1U << 31) + 1));
}

TEST(KeyTimes, onlyTheLatestAreKept) {
    KeyTimes times;
    for (std::uint32_t time = 10; time < 1000; time += 10) {
        times.addPress(time);
        times.addRelease(time + 5);
    }
    EXPECT_FALSE(times.startsPress(993));
    EXPECT_TRUE(times.startsPress(996));
    EXPECT_FALSE(times.wentUpBetween(10, 100));
}

} // namespace
} // namespace tavro
