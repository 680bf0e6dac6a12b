#include "PerformanceModel/ChordMode.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <limits>
#include <string>

namespace tavro {
namespace {

struct ModeCase {
    ChordMode mode;
    std::string rawValue;
    int tones;
};

class ChordModeCase : public testing::TestWithParam<ModeCase> {};

TEST_P(ChordModeCase, HasItsNameAndItsNumberOfTones) {
    const auto& [mode, name, tones] = GetParam();
    EXPECT_EQ(rawValue(mode), name);
    EXPECT_EQ(chordModeFromRawValue(name), mode);
    EXPECT_EQ(stackedTones(mode), tones);
}

INSTANTIATE_TEST_SUITE_P(EachMode, ChordModeCase,
                         testing::Values(ModeCase{ChordMode::off, "Off", 0},
                                         ModeCase{ChordMode::triad, "Triad", 3},
                                         ModeCase{ChordMode::seventh, "Seventh", 4},
                                         ModeCase{ChordMode::ninth, "Ninth", 5},
                                         ModeCase{ChordMode::eleventh, "Eleventh", 6}),
                         [](const auto& test) { return test.param.rawValue; });

TEST(ChordMode, IsListedInTheOrderOfThePicker) {
    EXPECT_THAT(allChordModes, testing::ElementsAre(ChordMode::off, ChordMode::triad, ChordMode::seventh,
                                                    ChordMode::ninth, ChordMode::eleventh));
}

class NoChordMode : public testing::TestWithParam<const char*> {};

TEST_P(NoChordMode, IsMadeOfAnUnknownName) {
    EXPECT_EQ(chordModeFromRawValue(GetParam()), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(OtherTexts, NoChordMode,
                         testing::Values("", "off", "OFF", "seventh", "Seventh ", " Triad", "Thirteenth"));

struct Band {
    std::int64_t complexity;
    ChordMode mode;
};

class ChordModeBand : public testing::TestWithParam<Band> {};

TEST_P(ChordModeBand, FollowsTheComplexityControl) {
    EXPECT_EQ(chordModeForComplexity(GetParam().complexity), GetParam().mode);
}

INSTANTIATE_TEST_SUITE_P(
    Boundaries, ChordModeBand,
    testing::Values(Band{std::numeric_limits<std::int64_t>::min(), ChordMode::triad},
                    Band{-1, ChordMode::triad}, Band{0, ChordMode::triad}, Band{64, ChordMode::triad},
                    Band{65, ChordMode::seventh}, Band{79, ChordMode::seventh}, Band{80, ChordMode::ninth},
                    Band{81, ChordMode::ninth}, Band{93, ChordMode::ninth}, Band{94, ChordMode::eleventh},
                    Band{100, ChordMode::eleventh}, Band{101, ChordMode::eleventh},
                    Band{std::numeric_limits<std::int64_t>::max(), ChordMode::eleventh}));

} // namespace
} // namespace tavro
