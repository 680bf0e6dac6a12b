#include "NoteEngine/ChordVoicing.h"

#include "NoteEngine/NaiveChordNames.h"
#include "PerformanceModel/ArbitraryPerformanceState.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>

namespace tavro {
namespace {

std::optional<int> bassOf(const Notes& notes, std::int64_t octavesDown = 1) {
    PerformanceState state;
    state.bassOctaveDown = octavesDown;
    return ChordVoicing::bassNote(notes, state);
}

struct BassCase {
    Notes notes;
    int oneOctaveDown;
    int twoOctavesDown;
};

class BassNote : public testing::TestWithParam<BassCase> {};

TEST_P(BassNote, LiesUnderTheRootBelowTheChord) {
    EXPECT_EQ(bassOf(GetParam().notes, 1), GetParam().oneOctaveDown);
    EXPECT_EQ(bassOf(GetParam().notes, 2), GetParam().twoOctavesDown);
}

INSTANTIATE_TEST_SUITE_P(Chords, BassNote,
                         testing::Values(BassCase{{60, 64, 67}, 48, 36}, BassCase{{64, 67, 72}, 48, 36},
                                         BassCase{{67, 72, 76}, 48, 36}, BassCase{{72, 67, 76}, 48, 36},
                                         BassCase{{64}, 52, 40}, BassCase{{52, 64}, 40, 28},
                                         BassCase{{127}, 115, 103}, BassCase{{59, 62, 65}, 47, 35},
                                         BassCase{{57, 60, 64, 67}, 45, 33}));

// Below the first octave the bass goes down as far as there are notes, and no further.
INSTANTIATE_TEST_SUITE_P(NearTheBottom, BassNote,
                         testing::Values(BassCase{{12, 16, 19}, 0, 0}, BassCase{{24, 28, 31}, 12, 0},
                                         BassCase{{0}, 0, 0}, BassCase{{11}, 11, 11}, BassCase{{23}, 11, 11},
                                         BassCase{{4, 7, 12}, 0, 0}, BassCase{{2, 5, 10}, 10, 10},
                                         BassCase{{3, 8, 12}, 8, 8}));

TEST(BassNoteOctaves, AreOneUpToOneAndTwoFromTwoOn) {
    const Notes chord{60, 64, 67};
    for (const std::int64_t one :
         {std::numeric_limits<std::int64_t>::min(), std::int64_t{-1}, std::int64_t{0}, std::int64_t{1}}) {
        EXPECT_EQ(bassOf(chord, one), 48) << one;
    }
    for (const std::int64_t two :
         {std::int64_t{2}, std::int64_t{3}, std::numeric_limits<std::int64_t>::max()}) {
        EXPECT_EQ(bassOf(chord, two), 36) << two;
    }
}

TEST(BassNoteAbsence, WithoutAChordThatHasAName) {
    EXPECT_EQ(bassOf({}), std::nullopt);
    EXPECT_EQ(bassOf({60, 61}), std::nullopt);
    EXPECT_EQ(bassOf({60, 61, 62}), std::nullopt);
}

TEST(BassNoteSwitch, IsNotAskedHere) {
    PerformanceState state;
    state.bassNoteEnabled = true;
    EXPECT_EQ(ChordVoicing::bassNote(Notes{60, 64, 67}, state), 48);
}

std::optional<int> naiveRoot(const Notes& notes) {
    if (std::ranges::all_of(notes, [&](int note) { return (note - notes.front()) % 12 == 0; })) {
        return notes.front() % 12;
    }
    const auto match = naive::bestMatch(notes, false);
    return match ? std::optional(match->root) : std::nullopt;
}

RC_GTEST_PROP(BassNoteProperties, AnyNotesHaveTheBassThatTheRulesSay, ()) {
    const auto state = *wildState();
    const auto from = *rc::gen::inRange(0, 104);
    const auto notes = *rc::gen::nonEmpty(rc::gen::container<Notes>(rc::gen::inRange(from, from + 24)));
    const auto bass = ChordVoicing::bassNote(notes, state);
    const auto root = naiveRoot(notes);
    RC_ASSERT(bass.has_value() == root.has_value());
    RC_PRE(root.has_value());
    int expected = *root;
    for (int note = *root; note <= *std::ranges::min_element(notes); note += 12) {
        expected = note;
    }
    expected -= state.bassOctaveDown >= 2 ? 24 : 12;
    while (expected < 0) {
        expected += 12;
    }
    RC_ASSERT(bass == std::min(expected, 127));
}

} // namespace
} // namespace tavro
