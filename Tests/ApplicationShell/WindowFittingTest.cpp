#include "ApplicationShell/WindowFitting.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

namespace tavro {
namespace {

using Frame = WindowFitting::Frame;
using Size = WindowFitting::Size;

constexpr double largeScreen = 2000;

/// Where the window is afterwards.
Frame fitted(const Frame& current, std::optional<double> availableHeight, int preferredHeight) {
    return WindowFitting::fit(current, availableHeight, preferredHeight).target.value_or(current);
}

TEST(WindowFitting, theHeightFollowsThePanels) {
    EXPECT_EQ(WindowFitting::preferredHeight(false, false), 805);
    EXPECT_EQ(WindowFitting::preferredHeight(true, false), 909);
    EXPECT_EQ(WindowFitting::preferredHeight(false, true), 917);
    EXPECT_EQ(WindowFitting::preferredHeight(true, true), 1021);
}

TEST(WindowFitting, theLimitsFollowThePreferredHeight) {
    const auto closed = WindowFitting::fit({0, 0, 1280, 805}, largeScreen, 805);
    EXPECT_EQ(closed.minimum, (Size{720, 520}));
    EXPECT_EQ(closed.maximum, (Size{1600, 1006.25}));
    EXPECT_EQ(closed.aspect, (Size{1280, 805}));
    const auto open = WindowFitting::fit({0, 0, 1280, 805}, largeScreen, 1021);
    EXPECT_EQ(open.minimum, (Size{720, 520}));
    EXPECT_EQ(open.maximum, (Size{1600, 1276.25}));
    EXPECT_EQ(open.aspect, (Size{1280, 1021}));
}

TEST(WindowFitting, aWindowThatFitsStays) {
    EXPECT_FALSE(WindowFitting::fit({60, 40, 1280, 805}, largeScreen, 805).target);
}

TEST(WindowFitting, openingAPanelMovesOnlyTheLowerEdge) {
    EXPECT_EQ(fitted({60, 40, 1280, 805}, largeScreen, 909), (Frame{60, 40, 1280, 909}));
    EXPECT_EQ(fitted({60, 40, 1280, 909}, largeScreen, 1021), (Frame{60, 40, 1280, 1021}));
    EXPECT_EQ(fitted({60, 40, 1280, 1021}, largeScreen, 805), (Frame{60, 40, 1280, 805}));
}

TEST(WindowFitting, theHeightIsScaledWithTheWidth) {
    EXPECT_EQ(fitted({0, 0, 960, 603.75}, largeScreen, 1021), (Frame{0, 0, 960, 765.75}));
    EXPECT_EQ(fitted({0, 0, 1600, 1006.25}, largeScreen, 909), (Frame{0, 0, 1600, 1136.25}));
}

TEST(WindowFitting, aWindowWiderThanTheLargestBecomesTheLargest) {
    EXPECT_EQ(fitted({0, 0, 2560, 1400}, largeScreen, 805), (Frame{0, 0, 1600, 1006.25}));
}

TEST(WindowFitting, aVeryNarrowWindowKeepsASmallestScale) {
    // 0.5625 of the full width, and below what the scale goes down to.
    EXPECT_EQ(fitted({0, 0, 720, 520}, largeScreen, 1021).height, 1021 * 0.58);
    EXPECT_EQ(fitted({0, 0, 720, 520}, largeScreen, 1021).width, 720);
    // 0.58 exactly.
    EXPECT_EQ(fitted({0, 0, 742.4, 520}, largeScreen, 1021).height, 1021 * 0.58);
}

TEST(WindowFitting, theScreenLimitsTheHeight) {
    EXPECT_EQ(fitted({0, 0, 1280, 805}, 768, 805), (Frame{0, 0, 1280, 728}));
    EXPECT_EQ(fitted({0, 0, 1280, 805}, 1000, 1021), (Frame{0, 0, 1280, 960}));
}

TEST(WindowFitting, theScreenDoesNotLimitItBelowTheSmallest) {
    EXPECT_EQ(fitted({0, 0, 1280, 805}, 480, 805), (Frame{0, 0, 1280, 520}));
    EXPECT_EQ(fitted({0, 0, 1280, 805}, 560, 805), (Frame{0, 0, 1280, 520}));
    EXPECT_EQ(fitted({0, 0, 1280, 805}, 561, 805), (Frame{0, 0, 1280, 521}));
}

TEST(WindowFitting, withoutAScreenThePreferredHeightStandsForIt) {
    EXPECT_EQ(fitted({0, 0, 1280, 805}, std::nullopt, 909), (Frame{0, 0, 1280, 869}));
}

TEST(WindowFitting, twoPointsAreNoDifference) {
    EXPECT_FALSE(WindowFitting::fit({0, 0, 1280, 803}, largeScreen, 805).target);
    EXPECT_FALSE(WindowFitting::fit({0, 0, 1280, 807}, largeScreen, 805).target);
    EXPECT_TRUE(WindowFitting::fit({0, 0, 1280, 802.9}, largeScreen, 805).target);
    EXPECT_TRUE(WindowFitting::fit({0, 0, 1280, 807.1}, largeScreen, 805).target);
    EXPECT_FALSE(WindowFitting::fit({0, 0, 1602, 1006.25}, largeScreen, 805).target);
    EXPECT_EQ(fitted({0, 0, 1602.1, 1006.25}, largeScreen, 805), (Frame{0, 0, 1600, 1006.25}));
}

struct Situation {
    Frame frame;
    double availableHeight;
    int preferredHeight;
};

Situation anySituation() {
    const auto points = [](int lowest, int highest) {
        return *rc::gen::inRange(lowest * 4, highest * 4 + 1) / 4.0;
    };
    return {.frame = {points(-3000, 3000), points(-3000, 3000), points(1, 4000), points(1, 4000)},
            .availableHeight = points(0, 4000),
            .preferredHeight = *rc::gen::element(805, 909, 917, 1021)};
}

RC_GTEST_PROP(WindowFitting, keepsTheLeftAndTheTopEdge, ()) {
    const auto now = anySituation();
    const auto after = fitted(now.frame, now.availableHeight, now.preferredHeight);
    RC_ASSERT(after.left == now.frame.left);
    RC_ASSERT(after.top == now.frame.top);
}

RC_GTEST_PROP(WindowFitting, hasDoneAllThereIsToDo, ()) {
    const auto now = anySituation();
    const auto after = fitted(now.frame, now.availableHeight, now.preferredHeight);
    RC_ASSERT(!WindowFitting::fit(after, now.availableHeight, now.preferredHeight).target);
}

RC_GTEST_PROP(WindowFitting, staysOnTheScreenAndWithinTheLargest, ()) {
    const auto now = anySituation();
    const auto fit = WindowFitting::fit(now.frame, now.availableHeight, now.preferredHeight);
    RC_PRE(fit.target.has_value());
    RC_ASSERT(fit.target->width <= fit.maximum.width);
    RC_ASSERT(fit.target->height <= fit.maximum.height);
    RC_ASSERT(fit.target->height <= now.availableHeight - 40 || fit.target->height <= 520);
}

RC_GTEST_PROP(WindowFitting, neverWidensAndNarrowsOnlyWhatIsTooWide, ()) {
    const auto now = anySituation();
    const auto fit = WindowFitting::fit(now.frame, now.availableHeight, now.preferredHeight);
    RC_PRE(fit.target.has_value());
    RC_ASSERT(fit.target->width == now.frame.width || (now.frame.width > 1600 && fit.target->width == 1600));
}

RC_GTEST_PROP(WindowFitting, keepsTheProportionsWhereTheScreenHasRoom, ()) {
    auto now = anySituation();
    now.availableHeight = 5000;
    now.frame.width = *rc::gen::inRange(743, 1601);
    const auto fit = WindowFitting::fit(now.frame, now.availableHeight, now.preferredHeight);
    RC_PRE(fit.target.has_value());
    const double difference = fit.target->width * fit.aspect.height - fit.target->height * fit.aspect.width;
    RC_ASSERT(std::abs(difference) < 1e-6);
}

RC_GTEST_PROP(WindowFitting, leavesAloneExactlyWhatIsNearEnough, ()) {
    const auto now = anySituation();
    // A window of no height is never near, so that it tells where every window of this width is to be.
    auto flat = now.frame;
    flat.height = 0;
    const auto goal = WindowFitting::fit(flat, now.availableHeight, now.preferredHeight).target;
    RC_ASSERT(goal.has_value());
    const bool isNear =
        std::abs(goal->width - now.frame.width) <= 2 && std::abs(goal->height - now.frame.height) <= 2;
    RC_ASSERT(WindowFitting::fit(now.frame, now.availableHeight, now.preferredHeight).target.has_value() !=
              isNear);
}

} // namespace
} // namespace tavro
