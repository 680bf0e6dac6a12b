#include "Platform/Linux/X11/WindowAspectAdapter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>

namespace tavro::x11 {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

/// The range of that ratio alone.
WindowAspectAdapter::Range of(QSize ratio) {
    return WindowAspectAdapter::rangeOf(ratio, ratio);
}

TEST(WindowAspect, standsBesideTheOtherWishes) {
    std::vector<std::uint32_t> hints(18);
    std::iota(hints.begin(), hints.end(), 100);
    hints[0] = 0x160;
    EXPECT_THAT(WindowAspectAdapter::withRange(hints, of({1280, 909})),
                ElementsAre(0x1e0, 101, 102, 103, 104, 105, 106, 107, 108, 109, 110, 1280, 909, 1280, 909,
                            115, 116, 117));
}

TEST(WindowAspect, isTheOnlyWishWhereThereIsNone) {
    const auto hints = WindowAspectAdapter::withRange({}, of({1280, 805}));
    EXPECT_THAT(hints, SizeIs(18));
    EXPECT_EQ(hints[0], 1u << 7);
    EXPECT_EQ(std::accumulate(hints.begin(), hints.end(), 0u), (1u << 7) + 2 * (1280 + 805));
}

TEST(WindowAspect, isFoundWhereItIsAlready) {
    const auto hints = WindowAspectAdapter::withRange({}, of({1280, 805}));
    EXPECT_EQ(WindowAspectAdapter::withRange(hints, of({1280, 805})), hints);
    EXPECT_NE(WindowAspectAdapter::withRange(hints, of({1280, 917})), hints);
}

TEST(WindowAspect, whatTheScreenLimitsMayBeWider) {
    std::vector<std::uint32_t> hints(18);
    hints = WindowAspectAdapter::withRange(hints, WindowAspectAdapter::rangeOf({1280, 805}, {1280, 728}));
    EXPECT_THAT(std::vector(hints.begin() + 11, hints.begin() + 15), ElementsAre(1280, 805, 1280, 728));
}

TEST(WindowAspect, roundingAndHigherShapesMakeNoRange) {
    for (const QSize size : {QSize(800, 503), QSize(1281, 805), QSize(720, 520), QSize(1280, 804)}) {
        const auto range = WindowAspectAdapter::rangeOf({1280, 805}, size);
        EXPECT_EQ(range.widest.width, 1280u);
        EXPECT_EQ(range.widest.height, 805u);
    }
}

TEST(WindowAspect, theSmallestSizeHasItToo) {
    const auto smallest = [](QSize ratio) {
        std::vector<std::uint32_t> hints(18);
        hints[0] = 1u << 4;
        hints[5] = 720;
        hints[6] = 520;
        hints = WindowAspectAdapter::withRange(hints, of(ratio));
        EXPECT_EQ(WindowAspectAdapter::withRange(hints, of(ratio)), hints);
        return std::pair(hints[5], hints[6]);
    };
    EXPECT_EQ(smallest({1280, 805}), std::pair(827u, 520u));
    EXPECT_EQ(smallest({1280, 909}), std::pair(733u, 520u));
    EXPECT_EQ(smallest({1280, 917}), std::pair(726u, 520u));
    EXPECT_EQ(smallest({1280, 1021}), std::pair(720u, 575u));
}

} // namespace
} // namespace tavro::x11
