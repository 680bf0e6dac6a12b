#include "PerformanceModel/ScaleEngine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <set>
#include <string>
#include <vector>

namespace tavro {
namespace {

struct ScaleRow {
    std::string name;
    std::vector<int> intervals;
};

const std::vector<ScaleRow> scaleRows{
    {"Chromatic", {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}},
    {"Major", {0, 2, 4, 5, 7, 9, 11}},
    {"Natural Minor", {0, 2, 3, 5, 7, 8, 10}},
    {"Harmonic Minor", {0, 2, 3, 5, 7, 8, 11}},
    {"Melodic Minor", {0, 2, 3, 5, 7, 9, 11}},
    {"Dorian", {0, 2, 3, 5, 7, 9, 10}},
    {"Phrygian", {0, 1, 3, 5, 7, 8, 10}},
    {"Lydian", {0, 2, 4, 6, 7, 9, 11}},
    {"Mixolydian", {0, 2, 4, 5, 7, 9, 10}},
    {"Locrian", {0, 1, 3, 5, 6, 8, 10}},
    {"Major Pentatonic", {0, 2, 4, 7, 9}},
    {"Minor Pentatonic", {0, 3, 5, 7, 10}},
    {"Blues Minor", {0, 3, 5, 6, 7, 10}},
};

TEST(ScaleEngine, HasThirteenScales) {
    EXPECT_EQ(ScaleEngine::scales().size(), scaleRows.size());
}

class ScaleTable : public testing::TestWithParam<std::size_t> {};

TEST_P(ScaleTable, HasTheRowAtItsPlaceAndFindsItByName) {
    ASSERT_LT(GetParam(), ScaleEngine::scales().size());
    const auto& row = scaleRows[GetParam()];
    const auto& scale = ScaleEngine::scales()[GetParam()];
    EXPECT_EQ(scale.name, row.name);
    EXPECT_EQ(std::vector<int>(scale.intervals.begin(), scale.intervals.end()), row.intervals);
    EXPECT_EQ(ScaleEngine::scale(row.name), scale);
}

INSTANTIATE_TEST_SUITE_P(EachRow, ScaleTable, testing::Range<std::size_t>(0, 13));

TEST(ScaleEngine, ComparesNameAndIntervals) {
    const std::vector<int> some{0, 2};
    const std::vector<int> equal{0, 2};
    const std::vector<int> other{0, 3};
    EXPECT_EQ((ScaleDefinition{"x", some}), (ScaleDefinition{"x", equal}));
    EXPECT_FALSE((ScaleDefinition{"x", some}) == (ScaleDefinition{"y", some}));
    EXPECT_FALSE((ScaleDefinition{"x", some}) == (ScaleDefinition{"x", other}));
}

class UnknownScale : public testing::TestWithParam<const char*> {};

TEST_P(UnknownScale, PlaysChromatic) {
    EXPECT_EQ(ScaleEngine::scale(GetParam()).name, "Chromatic");
}

INSTANTIATE_TEST_SUITE_P(Names, UnknownScale,
                         testing::Values("", "major", "MAJOR", "Major ", " Major", "Maj", "Minor",
                                         "Major Pentatonic2", "Blues"));

const std::vector<std::string> sharps{"C", "C#", "D", "D#", "E", "F", "F#", "G", "G#", "A", "A#", "B"};
const std::vector<std::string> flats{"C", "Db", "D", "Eb", "E", "F", "Gb", "G", "Ab", "A", "Bb", "B"};

TEST(NoteNames, OfAllNotesFollowTheTwoTables) {
    std::size_t note = 0;
    for (int octave = -1; octave <= 9; ++octave) {
        for (std::size_t pitch = 0; pitch < 12 && note <= 127; ++pitch, ++note) {
            const auto midiNote = static_cast<std::int64_t>(note);
            EXPECT_EQ(ScaleEngine::noteName(midiNote, false), sharps[pitch] + std::to_string(octave));
            EXPECT_EQ(ScaleEngine::noteName(midiNote, true), flats[pitch] + std::to_string(octave));
            EXPECT_EQ(ScaleEngine::pitchName(midiNote, false), sharps[pitch]);
            EXPECT_EQ(ScaleEngine::pitchName(midiNote, true), flats[pitch]);
        }
    }
    EXPECT_EQ(note, 128U);
}

struct NoteName {
    std::int64_t note;
    bool preferFlats;
    std::string withOctave;
    std::string pitch;
};

class NoteNameExample : public testing::TestWithParam<NoteName> {};

TEST_P(NoteNameExample, ReadsAsExpected) {
    EXPECT_EQ(ScaleEngine::noteName(GetParam().note, GetParam().preferFlats), GetParam().withOctave);
    EXPECT_EQ(ScaleEngine::pitchName(GetParam().note, GetParam().preferFlats), GetParam().pitch);
}

INSTANTIATE_TEST_SUITE_P(InsideAndOutside, NoteNameExample,
                         testing::Values(NoteName{60, false, "C4", "C"}, NoteName{61, false, "C#4", "C#"},
                                         NoteName{61, true, "Db4", "Db"}, NoteName{0, false, "C-1", "C"},
                                         NoteName{11, false, "B-1", "B"}, NoteName{12, false, "C0", "C"},
                                         NoteName{127, false, "G9", "G"}, NoteName{130, false, "G9", "G"},
                                         NoteName{-5, true, "C-1", "C"}, NoteName{-1, false, "C-1", "C"},
                                         NoteName{70, true, "Bb4", "Bb"}, NoteName{70, false, "A#4", "A#"},
                                         NoteName{std::numeric_limits<std::int64_t>::max(), true, "G9", "G"},
                                         NoteName{std::numeric_limits<std::int64_t>::min(), true, "C-1",
                                                  "C"}));

const std::vector<std::string> minorTypes{"Natural Minor",    "Harmonic Minor", "Melodic Minor",
                                          "Dorian",           "Phrygian",       "Locrian",
                                          "Minor Pentatonic", "Blues Minor"};
const std::vector<std::string> otherTypes{"Chromatic",        "Major", "Lydian",
                                          "Major Pentatonic", "",      "mixolydian"};

void expectFlatsFor(const std::vector<std::string>& scales, const std::set<std::int64_t>& flatRoots) {
    for (const auto& scale : scales) {
        for (std::int64_t root = -24; root < 36; ++root) {
            EXPECT_EQ(ScaleEngine::preferFlats(root, scale), flatRoots.contains((root + 24) % 12))
                << scale << " on " << root;
        }
    }
}

TEST(PreferFlats, InMinorKeysOtherThanTheFourSharpOnes) {
    expectFlatsFor(minorTypes, {0, 2, 3, 5, 7, 8, 9, 10});
}

TEST(PreferFlats, InMajorKeysWithFlats) {
    expectFlatsFor(otherTypes, {1, 3, 5, 6, 8, 10});
}

TEST(PreferFlats, AlwaysInMixolydian) {
    expectFlatsFor({"Mixolydian"}, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
}

TEST(PreferFlats, Examples) {
    EXPECT_TRUE(ScaleEngine::preferFlats(9, "Natural Minor"));
    EXPECT_FALSE(ScaleEngine::preferFlats(4, "Dorian"));
    EXPECT_TRUE(ScaleEngine::preferFlats(7, "Mixolydian"));
    EXPECT_FALSE(ScaleEngine::preferFlats(7, "Major"));
    EXPECT_TRUE(ScaleEngine::preferFlats(5, "Lydian"));
    EXPECT_TRUE(ScaleEngine::preferFlats(-11, "Major"));
}

TEST(PreferFlats, TakesTheLargestRoots) {
    // 2^63 - 1 is 7 modulo 12, and -2^63 is 4.
    EXPECT_FALSE(ScaleEngine::preferFlats(std::numeric_limits<std::int64_t>::max(), "Major"));
    EXPECT_TRUE(ScaleEngine::preferFlats(std::numeric_limits<std::int64_t>::max(), "Dorian"));
    EXPECT_FALSE(ScaleEngine::preferFlats(std::numeric_limits<std::int64_t>::min(), "Dorian"));
}

} // namespace
} // namespace tavro
