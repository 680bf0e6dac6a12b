#include "NoteEngine/MidiNoteEngine.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace tavro {
namespace {

PerformanceState major(ChordMode mode, std::int64_t complexity = 0) {
    PerformanceState state;
    state.scaleName = "Major";
    state.chordMode = mode;
    state.voicingComplexity = complexity;
    return state;
}

Notes notesOf(Character key, const PerformanceState& state) {
    return MidiNoteEngine(KeyboardLayout::scaleRowsQWERTZ()).notesForKey(key, state);
}

struct BandCase {
    std::int64_t complexity;
    Notes triad;
    Notes eleventh;
};

/// The key "a" of C major, at both ends of every band, for the fewest and the most stacked tones.
const Notes triadShape{60, 64, 67};
const Notes sixTones{60, 64, 67, 71, 74, 77};
const Notes inverted{64, 67, 72};
const Notes invertedSixTones{64, 67, 71, 72, 74, 77};
const Notes tenth{60, 76};
const Notes seventh{60, 67, 71, 76};
const Notes ninth{60, 71, 74, 76};
const Notes eleventh{60, 71, 74, 76, 77};

class VoicingBand : public testing::TestWithParam<BandCase> {};

TEST_P(VoicingBand, HasItsShape) {
    const auto& [complexity, triad, sixStacked] = GetParam();
    EXPECT_EQ(notesOf(U'a', major(ChordMode::triad, complexity)), triad);
    EXPECT_EQ(notesOf(U'a', major(ChordMode::eleventh, complexity)), sixStacked);
}

INSTANTIATE_TEST_SUITE_P(
    Boundaries, VoicingBand,
    testing::Values(BandCase{std::numeric_limits<std::int64_t>::min(), triadShape, sixTones},
                    BandCase{-1, triadShape, sixTones}, BandCase{0, triadShape, sixTones},
                    BandCase{19, triadShape, sixTones}, BandCase{20, inverted, invertedSixTones},
                    BandCase{25, inverted, invertedSixTones}, BandCase{39, inverted, invertedSixTones},
                    BandCase{40, tenth, tenth}, BandCase{50, tenth, tenth}, BandCase{64, tenth, tenth},
                    BandCase{65, seventh, seventh}, BandCase{70, seventh, seventh},
                    BandCase{79, seventh, seventh}, BandCase{80, seventh, seventh},
                    BandCase{81, seventh, seventh}, BandCase{82, ninth, ninth}, BandCase{85, ninth, ninth},
                    BandCase{93, ninth, ninth}, BandCase{94, eleventh, eleventh},
                    BandCase{100, eleventh, eleventh}, BandCase{101, eleventh, eleventh},
                    BandCase{std::numeric_limits<std::int64_t>::max(), eleventh, eleventh}));

struct ModeCase {
    ChordMode mode;
    Notes closePosition;
    Notes firstInversion;
};

class StackedMode : public testing::TestWithParam<ModeCase> {};

TEST_P(StackedMode, StacksItsTonesInThirds) {
    EXPECT_EQ(notesOf(U'a', major(GetParam().mode, 0)), GetParam().closePosition);
    EXPECT_EQ(notesOf(U'a', major(GetParam().mode, 30)), GetParam().firstInversion);
}

INSTANTIATE_TEST_SUITE_P(
    EachMode, StackedMode,
    testing::Values(ModeCase{ChordMode::triad, {60, 64, 67}, {64, 67, 72}},
                    ModeCase{ChordMode::seventh, {60, 64, 67, 71}, {64, 67, 71, 72}},
                    ModeCase{ChordMode::ninth, {60, 64, 67, 71, 74}, {64, 67, 71, 72, 74}},
                    ModeCase{ChordMode::eleventh, {60, 64, 67, 71, 74, 77}, {64, 67, 71, 72, 74, 77}}));

struct RowCase {
    Character key;
    std::int64_t firstNote;
    int lastNote;
    Character lastKey;
};

class SingleNotes : public testing::TestWithParam<RowCase> {};

TEST_P(SingleNotes, RiseAlongTheRowFromItsOctave) {
    const auto state = major(ChordMode::off);
    EXPECT_EQ(notesOf(GetParam().key, state), Notes{static_cast<int>(GetParam().firstNote)});
    EXPECT_EQ(notesOf(GetParam().lastKey, state), Notes{GetParam().lastNote});
}

INSTANTIATE_TEST_SUITE_P(EachRow, SingleNotes,
                         testing::Values(RowCase{U'y', 48, 64, U'-'}, RowCase{U'a', 60, 77, U'\u00E4'},
                                         RowCase{U'q', 72, 91, U'+'}, RowCase{U'1', 84, 103, U'\u00B4'}));

TEST(NotesForKey, OfOtherScalesUseTheirOwnLength) {
    auto state = major(ChordMode::off);
    state.scaleName = "Major Pentatonic";
    EXPECT_EQ(notesOf(U'g', state), Notes{69});
    EXPECT_EQ(notesOf(U'h', state), Notes{72});
    state.scaleName = "Blues Minor";
    EXPECT_EQ(notesOf(U'j', state), Notes{72});
    state.scaleName = "Chromatic";
    EXPECT_EQ(notesOf(U'\u00E4', state), Notes{70});
    EXPECT_EQ(notesOf(U'\u00B4', state), Notes{95});
    state.scaleName = "no such scale";
    EXPECT_EQ(notesOf(U's', state), Notes{61});
}

TEST(NotesForKey, InAFiveNoteScaleStacksEverySecondNote) {
    auto state = major(ChordMode::triad);
    state.scaleName = "Major Pentatonic";
    EXPECT_EQ(notesOf(U'a', state), (Notes{60, 64, 69}));
    state.chordMode = ChordMode::seventh;
    EXPECT_EQ(notesOf(U'a', state), (Notes{60, 64, 69, 74}));
}

TEST(NotesForKey, MoveWithRootBaseAndOctave) {
    auto state = major(ChordMode::triad);
    state.rootSemitone = 2;
    EXPECT_EQ(notesOf(U'a', state), (Notes{62, 66, 69}));
    state.rootSemitone = 14;
    EXPECT_EQ(notesOf(U'a', state), (Notes{74, 78, 81}));
    state.rootSemitone = -1;
    EXPECT_EQ(notesOf(U'a', state), (Notes{59, 63, 66}));
    state.rootSemitone = 0;
    state.baseMidiC = 48;
    state.globalOctaveOffset = -1;
    EXPECT_EQ(notesOf(U'a', state), (Notes{36, 40, 43}));
    EXPECT_EQ(notesOf(U'y', state), (Notes{24, 28, 31}));
}

TEST(NotesForKey, AtTheTopCollapseOntoTheLastNoteOnce) {
    auto state = major(ChordMode::triad);
    state.globalOctaveOffset = 5;
    EXPECT_EQ(notesOf(U'a', state), (Notes{120, 124, 127}));
    EXPECT_EQ(notesOf(U'd', state), (Notes{124, 127}));
    EXPECT_EQ(notesOf(U'q', state), Notes{127});
    state.voicingComplexity = 100;
    EXPECT_EQ(notesOf(U'a', state), (Notes{120, 127}));
}

TEST(NotesForKey, AtTheBottomCollapseOntoTheFirstNoteOnce) {
    auto state = major(ChordMode::triad);
    state.globalOctaveOffset = -5;
    EXPECT_EQ(notesOf(U'a', state), (Notes{0, 4, 7}));
    EXPECT_EQ(notesOf(U'y', state), Notes{0});
    state.voicingComplexity = 25;
    EXPECT_EQ(notesOf(U'y', state), (Notes{0, 12}));
}

TEST(NotesForKey, OfUnknownKeysAreNone) {
    for (const Character key : {U' ', U';', U'^', noKey}) {
        EXPECT_TRUE(notesOf(key, major(ChordMode::off)).empty());
        EXPECT_TRUE(notesOf(key, major(ChordMode::triad)).empty());
    }
}

TEST(NotesForKey, OfUpperCaseAreThoseOfLowerCase) {
    EXPECT_EQ(notesOf(U'A', major(ChordMode::triad)), triadShape);
    EXPECT_EQ(notesOf(U'\u00D6', major(ChordMode::off)), Notes{76});
}

TEST(NotesForKey, AreLimitedForChordsOnly) {
    auto state = major(ChordMode::eleventh);
    state.maxChordNotes = 2;
    EXPECT_EQ(notesOf(U'a', state), (Notes{60, 77}));
    state.bassNoteEnabled = true;
    EXPECT_EQ(notesOf(U'a', state), Notes{60});
}

TEST(NotesForKey, OfTheLayoutOfTheEngine) {
    MidiNoteEngine american(KeyboardLayout::scaleRowsQWERTY());
    EXPECT_EQ(american.notesForKey(U'z', major(ChordMode::off)), Notes{48});
    EXPECT_EQ(american.notesForKey(U'y', major(ChordMode::off)), Notes{81});
    EXPECT_EQ(notesOf(U'z', major(ChordMode::off)), Notes{81});
}

} // namespace
} // namespace tavro
