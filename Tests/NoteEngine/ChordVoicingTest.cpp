#include "NoteEngine/ChordVoicing.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <vector>

namespace tavro {
namespace {

using Role = ChordToneRole;
using Tones = std::vector<ChordTone>;

const Tones sixTones{{Role::root, 60},    {Role::third, 64}, {Role::fifth, 67},
                     {Role::seventh, 71}, {Role::ninth, 74}, {Role::eleventh, 77}};
const KeyPosition homeKey{U'a', 1, 0, 0};

TEST(ChordToneRole, CountsInStackingOrder) {
    EXPECT_EQ(static_cast<int>(Role::root), 0);
    EXPECT_EQ(static_cast<int>(Role::third), 1);
    EXPECT_EQ(static_cast<int>(Role::fifth), 2);
    EXPECT_EQ(static_cast<int>(Role::seventh), 3);
    EXPECT_EQ(static_cast<int>(Role::ninth), 4);
    EXPECT_EQ(static_cast<int>(Role::eleventh), 5);
}

struct CountCase {
    std::size_t baseNotes;
    std::int64_t complexity;
    std::size_t tones;
};

class ToneCount : public testing::TestWithParam<CountCase> {};

TEST_P(ToneCount, ComesFromTheBaseNotesAndIsRaisedByComplexity) {
    const std::vector<int> baseNotes(GetParam().baseNotes, 60);
    const auto tones =
        ChordVoicing::chordTones(baseNotes, GetParam().complexity, homeKey, {}, ScaleEngine::scale("Major"));
    EXPECT_EQ(tones, Tones(sixTones.begin(), sixTones.begin() + static_cast<long>(GetParam().tones)));
}

INSTANTIATE_TEST_SUITE_P(ModesAndBoundaries, ToneCount,
                         testing::Values(CountCase{3, 0, 3}, CountCase{3, 64, 3}, CountCase{3, 65, 4},
                                         CountCase{3, 79, 4}, CountCase{3, 80, 5}, CountCase{3, 93, 5},
                                         CountCase{3, 94, 6}, CountCase{3, 100, 6}, CountCase{4, 0, 4},
                                         CountCase{4, 64, 4}, CountCase{4, 65, 4}, CountCase{4, 79, 4},
                                         CountCase{4, 80, 5}, CountCase{4, 93, 5}, CountCase{4, 94, 6},
                                         CountCase{5, 0, 5}, CountCase{5, 65, 5}, CountCase{5, 80, 5},
                                         CountCase{5, 93, 5}, CountCase{5, 94, 6}, CountCase{6, 0, 6},
                                         CountCase{6, 65, 6}, CountCase{6, 80, 6}, CountCase{6, 94, 6},
                                         CountCase{0, 0, 1}, CountCase{1, 0, 1}, CountCase{2, 0, 2},
                                         CountCase{1, 65, 4}, CountCase{7, 0, 6}, CountCase{40, 100, 6}));

TEST(ChordTones, AreComputedFromThePositionNotFromTheBaseNotes) {
    PerformanceState state;
    state.globalOctaveOffset = 1;
    const std::vector<int> baseNotes{1, 2, 3};
    EXPECT_EQ(ChordVoicing::chordTones(baseNotes, 0, KeyPosition{U'd', 1, 2, 0}, state,
                                       ScaleEngine::scale("Major")),
              (Tones{{Role::root, 76}, {Role::third, 79}, {Role::fifth, 83}}));
}

struct DegreeCase {
    std::int64_t degree;
    int note;
};

class ScaleDegree : public testing::TestWithParam<DegreeCase> {};

TEST_P(ScaleDegree, WrapsIntoTheNextOctaveEitherWay) {
    EXPECT_EQ(ChordVoicing::scaleNote(homeKey, GetParam().degree, {}, ScaleEngine::scale("Major")),
              GetParam().note);
}

INSTANTIATE_TEST_SUITE_P(Degrees, ScaleDegree,
                         testing::Values(DegreeCase{0, 60}, DegreeCase{1, 62}, DegreeCase{6, 71},
                                         DegreeCase{7, 72}, DegreeCase{14, 84}, DegreeCase{-1, 59},
                                         DegreeCase{-7, 48}, DegreeCase{-8, 47}, DegreeCase{70, 127},
                                         DegreeCase{-70, 0},
                                         DegreeCase{std::numeric_limits<std::int64_t>::max(), 127},
                                         DegreeCase{std::numeric_limits<std::int64_t>::min(), 0}));

TEST(ScaleNote, OfAScaleWithoutIntervalsIsTheBaseNote) {
    PerformanceState state;
    state.rootSemitone = 5;
    EXPECT_EQ(ChordVoicing::scaleNote(homeKey, 3, state, ScaleDefinition{"", {}}), 60);
    state.baseMidiC = 200;
    EXPECT_EQ(ChordVoicing::scaleNote(homeKey, 3, state, ScaleDefinition{"", {}}), 127);
    state.baseMidiC = -200;
    EXPECT_EQ(ChordVoicing::scaleNote(homeKey, 3, state, ScaleDefinition{"", {}}), 0);
}

TEST(FirstInversion, RaisesEveryRootInItsPlace) {
    EXPECT_EQ(ChordVoicing::firstInversion(sixTones), (Notes{72, 64, 67, 71, 74, 77}));
    EXPECT_EQ(ChordVoicing::firstInversion(Tones{{Role::third, 4}, {Role::root, 120}, {Role::root, 3}}),
              (Notes{4, 127, 15}));
    EXPECT_TRUE(ChordVoicing::firstInversion({}).empty());
}

TEST(TenthVoicing, IsTheRootAndTheThirdAnOctaveUp) {
    EXPECT_EQ(ChordVoicing::tenthVoicing(sixTones), (Notes{60, 76}));
    EXPECT_EQ(ChordVoicing::tenthVoicing(
                  Tones{{Role::third, 120}, {Role::third, 1}, {Role::root, 50}, {Role::root, 2}}),
              (Notes{50, 127}));
}

TEST(TenthVoicing, WithoutRootOrThirdIsOpen) {
    EXPECT_EQ(ChordVoicing::tenthVoicing(Tones{{Role::root, 60}, {Role::fifth, 67}, {Role::ninth, 62}}),
              (Notes{60, 67, 74}));
    EXPECT_EQ(ChordVoicing::tenthVoicing(Tones{{Role::third, 64}, {Role::fifth, 67}}), (Notes{76, 67}));
}

TEST(OpenSeventhVoicing, IsRootFifthSeventhAndTheThirdAnOctaveUp) {
    EXPECT_EQ(ChordVoicing::openSeventhVoicing(sixTones), (Notes{60, 67, 71, 76}));
    EXPECT_EQ(ChordVoicing::openSeventhVoicing(Tones{{Role::third, 120}}), Notes{127});
    EXPECT_EQ(ChordVoicing::openSeventhVoicing(
                  Tones{{Role::fifth, 67}, {Role::fifth, 1}, {Role::seventh, 71}, {Role::ninth, 74}}),
              (Notes{67, 71}));
}

TEST(OpenSeventhVoicing, WithNothingToVoiceIsOpen) {
    EXPECT_EQ(ChordVoicing::openSeventhVoicing(Tones{{Role::ninth, 62}, {Role::eleventh, 65}}),
              (Notes{74, 77}));
}

TEST(UpperColorVoicing, LeavesTheFifthOut) {
    EXPECT_EQ(ChordVoicing::upperColorVoicing(sixTones, false), (Notes{60, 71, 74, 76}));
    EXPECT_EQ(ChordVoicing::upperColorVoicing(sixTones, true), (Notes{60, 71, 74, 76, 77}));
    EXPECT_EQ(ChordVoicing::upperColorVoicing(Tones{{Role::root, 60}, {Role::third, 120}}, true),
              (Notes{60, 127}));
}

TEST(UpperColorVoicing, WithNothingToVoiceIsOpen) {
    EXPECT_EQ(ChordVoicing::upperColorVoicing(Tones{{Role::fifth, 67}}, true), Notes{67});
    EXPECT_EQ(ChordVoicing::upperColorVoicing(Tones{{Role::fifth, 67}, {Role::eleventh, 65}}, false),
              (Notes{67, 77}));
    EXPECT_EQ(ChordVoicing::upperColorVoicing(Tones{{Role::fifth, 67}, {Role::eleventh, 65}}, true),
              Notes{65});
}

TEST(OpenVoicing, RaisesThirdNinthAndEleventh) {
    EXPECT_EQ(ChordVoicing::openVoicing(sixTones), (Notes{60, 76, 67, 71, 86, 89}));
    EXPECT_EQ(ChordVoicing::openVoicing(Tones{{Role::eleventh, 120}}), Notes{127});
    EXPECT_TRUE(ChordVoicing::openVoicing({}).empty());
}

} // namespace
} // namespace tavro
