#include "KeyboardInput/ModifierDoubleClickRules.h"

#include <gtest/gtest.h>

namespace tavro {
namespace {

constexpr std::uint32_t alt = 4;
constexpr std::uint32_t shift = 8;

class ModifierDoubleClickRulesTest : public testing::Test {
protected:
    ModifierDoubleClickRulesTest() { rules_.requiredModifiers = alt; }

    bool press(std::int64_t milliseconds, std::uint32_t modifiers = alt, bool isInside = true,
               double x = 10) {
        return rules_.isDoubleClick(
            {.milliseconds = milliseconds, .x = x, .y = 10, .isInside = isInside, .modifiers = modifiers});
    }

    ModifierDoubleClickRules rules_{{.milliseconds = 400, .distance = 5}};
};

TEST_F(ModifierDoubleClickRulesTest, TheSecondPressActsAndTheThirdAndFourthDoNot) {
    EXPECT_FALSE(press(0));
    EXPECT_TRUE(press(100));
    EXPECT_FALSE(press(200));
    EXPECT_FALSE(press(300));
}

TEST_F(ModifierDoubleClickRulesTest, AfterAPauseASeriesBeginsAnew) {
    EXPECT_FALSE(press(0));
    EXPECT_FALSE(press(400));
    EXPECT_TRUE(press(799));
    EXPECT_FALSE(press(5000));
    EXPECT_TRUE(press(5100));
}

TEST_F(ModifierDoubleClickRulesTest, AllRequiredModifiersMustBeHeldAtTheSecondPress) {
    rules_.requiredModifiers = alt | shift;
    EXPECT_FALSE(press(0, alt | shift));
    EXPECT_FALSE(press(100, alt));
    EXPECT_FALSE(press(1000, 0));
    EXPECT_TRUE(press(1100, alt | shift));
}

TEST_F(ModifierDoubleClickRulesTest, MoreModifiersAreAllowed) {
    EXPECT_FALSE(press(0, alt | shift));
    EXPECT_TRUE(press(100, alt | shift));
}

TEST_F(ModifierDoubleClickRulesTest, OutsideNothingHappensButThePressCounts) {
    EXPECT_FALSE(press(0, alt, false));
    EXPECT_FALSE(press(100, alt, false));
    EXPECT_FALSE(press(200, alt, true));
}

TEST_F(ModifierDoubleClickRulesTest, PressesFarApartAreNoSeries) {
    EXPECT_FALSE(press(0, alt, true, 10));
    EXPECT_FALSE(press(100, alt, true, 16));
    EXPECT_TRUE(press(200, alt, true, 21));
}

} // namespace
} // namespace tavro
