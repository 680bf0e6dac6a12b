#include "NoteEngine/ChordDetector.h"

#include "NoteEngine/NaiveChordNames.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace tavro {
namespace {

/// A pattern's tones in close position above its root, and the suffix that it reads as.
struct PatternCase {
    std::string name;
    std::vector<int> tones;
    std::string suffix;
};

void PrintTo(const PatternCase& pattern, std::ostream* stream) {
    *stream << pattern.name;
}

const std::vector<PatternCase> patternCases{
    {"Row01", {0, 2, 4, 7, 10}, "9"},
    {"Row02", {0, 2, 4, 7, 11}, "maj9"},
    {"Row03", {0, 2, 3, 7, 10}, "m9"},
    {"Row04", {0, 2, 4, 10}, "9"},
    {"Row05", {0, 2, 4, 11}, "maj9"},
    {"Row06", {0, 2, 3, 10}, "m9"},
    {"Row07", {0, 2, 4, 7, 9}, "6/9"},
    {"Row08", {0, 4, 7, 11}, "maj7"},
    {"Row09", {0, 4, 7, 10}, "7"},
    {"Row10", {0, 3, 7, 10}, "m7"},
    {"Row11", {0, 3, 6, 10}, "m7b5"},
    {"Row12", {0, 3, 6, 9}, "dim7"},
    {"Row13", {0, 3, 7, 11}, "mMaj7"},
    {"Row14", {0, 4, 8, 10}, "7#5"},
    {"Row15", {0, 4, 8, 11}, "maj7#5"},
    {"Row16", {0, 4, 7, 9}, "6"},
    {"Row17", {0, 3, 7, 9}, "m6"},
    {"Row18", {0, 2, 4, 7}, "add2"},
    {"Row19", {0, 4, 5, 7}, "add4"},
    {"Row20", {0, 4, 7}, ""},
    {"Row21", {0, 3, 7}, "m"},
    {"Row22", {0, 3, 6}, "dim"},
    {"Row23", {0, 4, 8}, "aug"},
    {"Row24", {0, 2, 5, 7}, "sus2add4"},
    {"Row25", {0, 2, 5}, "sus2add4"},
    {"Row26", {0, 2, 7}, "sus2"},
    {"Row27", {0, 5, 7}, "sus4"},
    {"Row28", {0, 4}, ""},
    {"Row29", {0, 3}, "m"},
    {"Row30", {0, 7}, "5"},
};

class ChordPattern : public testing::TestWithParam<PatternCase> {};

TEST_P(ChordPattern, InRootPositionIsNamedAfterItsRoot) {
    for (int root = 0; root < 12; ++root) {
        std::vector<int> notes;
        for (const int tone : GetParam().tones) {
            notes.push_back(48 + root + tone);
        }
        for (const bool flats : {false, true}) {
            const auto name = naive::pitchName(root, flats) + GetParam().suffix;
            EXPECT_EQ(ChordDetector::displayName(notes, flats), name);
            const auto match = ChordDetector::detect(notes, flats);
            ASSERT_TRUE(match) << name;
            EXPECT_EQ(match->name, name);
            EXPECT_EQ(match->rootPitchClass, root) << name;
            EXPECT_EQ(ChordDetector::rootPitchClass(notes), root) << name;
        }
    }
}

TEST_P(ChordPattern, WithAnyToneInTheBassReadsAsTheRulesSay) {
    for (int root = 0; root < 12; ++root) {
        for (const int bassTone : GetParam().tones) {
            std::vector<int> notes{36 + (root + bassTone) % 12};
            for (const int tone : GetParam().tones) {
                notes.push_back(48 + root + tone);
            }
            for (const bool flats : {false, true}) {
                const auto expected = naive::bestMatch(notes, flats);
                const auto match = ChordDetector::detect(notes, flats);
                ASSERT_TRUE(expected);
                ASSERT_TRUE(match) << expected->name;
                EXPECT_EQ(match->name, expected->name) << "bass tone " << bassTone << ", root " << root;
                EXPECT_EQ(match->rootPitchClass, expected->root) << match->name;
                EXPECT_EQ(match->score, expected->score) << match->name;
                EXPECT_EQ(ChordDetector::displayName(notes, flats), expected->name);
                EXPECT_EQ(ChordDetector::rootPitchClass(notes), expected->root) << match->name;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EachRow, ChordPattern, testing::ValuesIn(patternCases),
                         [](const auto& test) { return test.param.name; });

TEST(ChordPatternTable, IsCoveredRowByRow) {
    ASSERT_EQ(patternCases.size(), naive::patterns().size());
    for (std::size_t row = 0; row < patternCases.size(); ++row) {
        const auto& tones = patternCases[row].tones;
        EXPECT_EQ(std::set<int>(tones.begin(), tones.end()), naive::patterns()[row].required) << row + 1;
    }
}

} // namespace
} // namespace tavro
