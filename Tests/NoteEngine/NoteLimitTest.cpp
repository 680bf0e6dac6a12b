#include "NoteEngine/ChordVoicing.h"

#include "NoteEngine/NaiveKeyNotes.h"
#include "PerformanceModel/ArbitraryPerformanceState.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <limits>
#include <numeric>
#include <vector>

namespace tavro {
namespace {

struct TrimCase {
    std::int64_t keeping;
    Notes kept;
};

class Trimming : public testing::TestWithParam<TrimCase> {};

TEST_P(Trimming, RemovesTheSecondLowestUntilTwoAreLeft) {
    EXPECT_EQ(ChordVoicing::musicallyTrimmed({60, 64, 67, 71, 74}, GetParam().keeping), GetParam().kept);
    EXPECT_EQ(ChordVoicing::musicallyTrimmed({71, 60, 74, 67, 64}, GetParam().keeping), GetParam().kept);
}

INSTANTIATE_TEST_SUITE_P(
    Counts, Trimming,
    testing::Values(TrimCase{6, {60, 64, 67, 71, 74}}, TrimCase{5, {60, 64, 67, 71, 74}},
                    TrimCase{4, {60, 67, 71, 74}}, TrimCase{3, {60, 71, 74}}, TrimCase{2, {60, 74}},
                    TrimCase{1, {60}}, TrimCase{0, {}}, TrimCase{-1, {}},
                    TrimCase{std::numeric_limits<std::int64_t>::max(), {60, 64, 67, 71, 74}},
                    TrimCase{std::numeric_limits<std::int64_t>::min(), {}}));

struct LimitCase {
    std::int64_t maxChordNotes;
    std::size_t withoutBass;
    std::size_t withBass;
};

class NoteLimit : public testing::TestWithParam<LimitCase> {};

TEST_P(NoteLimit, KeepsOnePlaceFreeForTheBass) {
    Notes twenty(20);
    std::iota(twenty.begin(), twenty.end(), 40);
    PerformanceState state;
    state.maxChordNotes = GetParam().maxChordNotes;
    EXPECT_EQ(ChordVoicing::limitedChordNotes(twenty, state).size(), GetParam().withoutBass);
    state.bassNoteEnabled = true;
    EXPECT_EQ(ChordVoicing::limitedChordNotes(twenty, state).size(), GetParam().withBass);
}

INSTANTIATE_TEST_SUITE_P(Limits, NoteLimit,
                         testing::Values(LimitCase{std::numeric_limits<std::int64_t>::min(), 20, 20},
                                         LimitCase{-1, 20, 20}, LimitCase{0, 20, 20}, LimitCase{1, 1, 1},
                                         LimitCase{2, 2, 1}, LimitCase{3, 3, 2}, LimitCase{4, 4, 3},
                                         LimitCase{15, 15, 14}, LimitCase{16, 16, 15}, LimitCase{17, 16, 15},
                                         LimitCase{100, 16, 15},
                                         LimitCase{std::numeric_limits<std::int64_t>::max(), 16, 15}));

TEST(NoteLimitOrder, IsLeftAloneWhenNothingIsTrimmed) {
    PerformanceState state;
    state.maxChordNotes = 3;
    EXPECT_EQ(ChordVoicing::limitedChordNotes({67, 60, 64}, state), (Notes{67, 60, 64}));
    state.maxChordNotes = 0;
    EXPECT_EQ(ChordVoicing::limitedChordNotes({67, 60, 64, 60}, state), (Notes{67, 60, 64, 60}));
}

TEST(NoteLimitOrder, IsAscendingAfterTrimming) {
    PerformanceState state;
    state.maxChordNotes = 2;
    EXPECT_EQ(ChordVoicing::limitedChordNotes({67, 60, 64}, state), (Notes{60, 67}));
}

RC_GTEST_PROP(NoteLimitProperties, AnyNotesAreTrimmedAsTheRulesSay, ()) {
    const auto state = *wildState();
    const auto notes = *rc::gen::container<Notes>(rc::gen::inRange(0, 128));
    const auto keeping = *anyInteger();
    RC_ASSERT(ChordVoicing::musicallyTrimmed(notes, keeping) == naive::trimmed(notes, keeping));
    RC_ASSERT(ChordVoicing::limitedChordNotes(notes, state) == naive::limited(notes, state));
}

} // namespace
} // namespace tavro
