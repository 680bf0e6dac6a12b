#include "NoteEngine/ChordDetector.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tavro {
namespace {

struct ReadOut {
    std::vector<int> notes;
    std::string name;
    bool preferFlats = false;
};

void PrintTo(const ReadOut& readOut, std::ostream* stream) {
    *stream << readOut.name;
}

class ChordReadOut : public testing::TestWithParam<ReadOut> {};

TEST_P(ChordReadOut, IsTheNameOfTheChord) {
    EXPECT_EQ(ChordDetector::displayName(GetParam().notes, GetParam().preferFlats), GetParam().name);
}

TEST_P(ChordReadOut, DoesNotDependOnTheOrderOrTheNumberOfEqualNotes) {
    auto notes = GetParam().notes;
    std::vector<int> shuffled(notes.rbegin(), notes.rend());
    shuffled.insert(shuffled.end(), notes.begin(), notes.end());
    EXPECT_EQ(ChordDetector::displayName(shuffled, GetParam().preferFlats), GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(LoneNotes, ChordReadOut,
                         testing::Values(ReadOut{{}, "-"}, ReadOut{{60}, "C4"}, ReadOut{{0}, "C-1"},
                                         ReadOut{{127}, "G9"}, ReadOut{{61}, "C#4"},
                                         ReadOut{{61}, "Db4", true}, ReadOut{{48, 60}, "C"},
                                         ReadOut{{70, 46, 58}, "A#"}, ReadOut{{70, 46, 58}, "Bb", true}));

INSTANTIATE_TEST_SUITE_P(TwoPitchClasses, ChordReadOut,
                         testing::Values(ReadOut{{60, 67}, "C5"}, ReadOut{{60, 67, 72}, "C5"},
                                         ReadOut{{60, 64}, "C"}, ReadOut{{60, 76}, "C"},
                                         ReadOut{{60, 63}, "Cm"}, ReadOut{{55, 60}, "C5"},
                                         ReadOut{{64, 72}, "C"}, ReadOut{{63, 72}, "Cm"},
                                         ReadOut{{60, 61}, "Unknown"}, ReadOut{{60, 62}, "Unknown"},
                                         ReadOut{{60, 66}, "Unknown"}));

INSTANTIATE_TEST_SUITE_P(TriadsAndInversions, ChordReadOut,
                         testing::Values(ReadOut{{60, 64, 67}, "C"}, ReadOut{{64, 67, 72}, "C"},
                                         ReadOut{{67, 72, 76}, "C"}, ReadOut{{57, 60, 64}, "Am"},
                                         ReadOut{{60, 64, 69}, "Am"}, ReadOut{{64, 69, 72}, "Am"},
                                         ReadOut{{59, 62, 65}, "Bdim"}, ReadOut{{60, 64, 68}, "Caug"},
                                         ReadOut{{64, 68, 72}, "Eaug"}, ReadOut{{61, 65, 68}, "C#"},
                                         ReadOut{{61, 65, 68}, "Db", true}, ReadOut{{60, 62, 67}, "Csus2"},
                                         ReadOut{{60, 65, 67}, "Csus4"}, ReadOut{{65, 67, 72}, "Fsus2"},
                                         ReadOut{{60, 62, 65}, "Csus2add4"}));

// A power chord with one more tone reads as the shape that this makes on another root.
INSTANTIATE_TEST_SUITE_P(PowerChordsWithMore, ChordReadOut,
                         testing::Values(ReadOut{{60, 67, 69}, "Gsus2add4"}, ReadOut{{60, 67, 70}, "Gm"},
                                         ReadOut{{60, 61, 67}, "Unknown"}, ReadOut{{60, 66, 67}, "Unknown"},
                                         ReadOut{{60, 67, 71}, "G"}, ReadOut{{60, 62, 67, 71}, "Csus2"},
                                         ReadOut{{60, 65, 67, 71}, "Csus4"}));

// A strange bass under four pitch classes counts for more than the full chord above it.
INSTANTIATE_TEST_SUITE_P(
    SeventhChords, ChordReadOut,
    testing::Values(ReadOut{{60, 64, 67, 71}, "Cmaj7"}, ReadOut{{52, 60, 67, 71}, "Em"},
                    ReadOut{{60, 63, 66, 69}, "Cdim7"}, ReadOut{{63, 66, 69, 72}, "D#dim7"},
                    ReadOut{{63, 66, 69, 72}, "Ebdim7", true}, ReadOut{{57, 60, 64, 67}, "Am7"},
                    ReadOut{{60, 64, 67, 69}, "C6"}, ReadOut{{60, 67, 71, 76}, "Cmaj7"},
                    ReadOut{{59, 62, 65, 69}, "Bm7b5"}, ReadOut{{62, 65, 69, 71}, "Dm6"}));

INSTANTIATE_TEST_SUITE_P(
    Ninths, ChordReadOut,
    testing::Values(ReadOut{{60, 64, 67, 70, 74}, "C9"}, ReadOut{{60, 64, 67, 70, 62}, "C9"},
                    ReadOut{{60, 71, 74, 76}, "Cmaj9"}, ReadOut{{60, 63, 67, 71, 74}, "CmMaj9"},
                    ReadOut{{60, 63, 66, 70, 74}, "Cm9b5"}, ReadOut{{60, 64, 68, 70, 74}, "C7#5"}));

INSTANTIATE_TEST_SUITE_P(
    AddedTones, ChordReadOut,
    testing::Values(ReadOut{{60, 64, 67, 74}, "Cadd9"}, ReadOut{{60, 62, 64, 67}, "Cadd2"},
                    ReadOut{{60, 62, 64, 67, 74}, "Cadd9"}, ReadOut{{60, 64, 65, 67}, "Cadd4"},
                    ReadOut{{60, 62, 64, 65, 67}, "Cadd2add4"}, ReadOut{{60, 64, 65, 67, 74}, "Cadd2add4"},
                    ReadOut{{60, 62, 63, 65, 67}, "Cm add2,4"}, ReadOut{{60, 63, 65, 67, 74}, "Cm add9,4"},
                    ReadOut{{60, 63, 67, 74}, "Cm add9"}, ReadOut{{60, 63, 65, 67, 70}, "Cm7 add4"},
                    ReadOut{{60, 71, 74, 76, 77}, "Cmaj9 add4"},
                    ReadOut{{60, 62, 64, 65, 67, 69}, "C6/9 add4"}));

TEST(ChordDetector, FindsNothingInNothingAndInWhatHasNoName) {
    for (const auto& notes : {std::vector<int>{}, std::vector<int>{60, 61, 62}, std::vector<int>{60, 61}}) {
        EXPECT_EQ(ChordDetector::detect(notes), std::nullopt);
        EXPECT_EQ(ChordDetector::rootPitchClass(notes), std::nullopt);
    }
    EXPECT_EQ(ChordDetector::displayName(std::vector{60, 61, 62}, false), "Unknown");
}

TEST(ChordDetector, OnePitchClassIsItsOwnRoot) {
    for (int note = 0; note < 128; ++note) {
        const auto match = ChordDetector::detect(std::vector{note});
        ASSERT_TRUE(match) << note;
        EXPECT_EQ(match->rootPitchClass, note % 12);
        EXPECT_EQ(ChordDetector::rootPitchClass(std::vector{note, note % 12}), note % 12);
    }
}

TEST(ChordDetector, ScoresTheBestPattern) {
    // 114 for the pattern, 40 for the root in the bass, 3 for the root itself, 8 for leaving nothing over.
    const auto match = ChordDetector::detect(std::vector{60, 64, 67, 71});
    ASSERT_TRUE(match);
    EXPECT_EQ(*match, (ChordMatch{"Cmaj7", 0, 165}));
}

TEST(ChordDetector, SpellsWithSharpsUnlessTold) {
    EXPECT_EQ(ChordDetector::detect(std::vector{70, 74, 77})->name, "A#");
    EXPECT_EQ(ChordDetector::detect(std::vector{70, 74, 77}, true)->name, "Bb");
}

} // namespace
} // namespace tavro
