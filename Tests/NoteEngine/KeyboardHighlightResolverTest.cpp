#include "NoteEngine/KeyboardHighlightResolver.h"

#include <gmock/gmock.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tavro {
namespace {

using Resolver = KeyboardHighlightResolver;
using Keys = std::set<Character>;

const KeyboardLayout& german() {
    return KeyboardLayout::scaleRowsQWERTZ();
}

PerformanceState majorTriads(std::int64_t complexity = 0) {
    PerformanceState state;
    state.scaleName = "Major";
    state.chordMode = ChordMode::triad;
    state.voicingComplexity = complexity;
    return state;
}

TEST(NormalizedKeys, AreLowerCase) {
    EXPECT_EQ(Resolver::normalized({U'A', U'a', U'\u00D6', U'1', U'#'}), (Keys{U'a', U'\u00F6', U'1', U'#'}));
    EXPECT_TRUE(Resolver::normalized({}).empty());
}

struct NearestCase {
    Character target;
    std::vector<Character> candidates;
    std::optional<Character> nearest;
};

class NearestKey : public testing::TestWithParam<NearestCase> {};

TEST_P(NearestKey, IsTheOneWithTheSmallestDistance) {
    EXPECT_EQ(Resolver::nearestKey(GetParam().target, GetParam().candidates, german()), GetParam().nearest);
}

INSTANTIATE_TEST_SUITE_P(
    Candidates, NearestKey,
    testing::Values(NearestCase{U'a', {}, std::nullopt}, NearestCase{U'a', {U'+'}, U'+'},
                    // Without a place to start from, or with no choice, nothing is compared.
                    NearestCase{U' ', {U'+', U'a'}, U'+'}, NearestCase{U' ', {}, std::nullopt},
                    NearestCase{U'a', {U'#'}, U'#'},
                    // The far end of the same row is nearer than the key above.
                    NearestCase{U'a', {U'q', U'\u00E4'}, U'\u00E4'},
                    NearestCase{U'1', {U'q', U'\u00B4'}, U'\u00B4'}, NearestCase{U'a', {U'1', U'q'}, U'q'},
                    NearestCase{U'a', {U'e', U'w'}, U'w'}, NearestCase{U'g', {U'a', U'h', U'd'}, U'h'},
                    NearestCase{U'g', {U'a', U'g'}, U'g'},
                    // Equal distances: the earlier one.
                    NearestCase{U'g', {U'f', U'h'}, U'f'}, NearestCase{U'g', {U'h', U'f'}, U'h'},
                    NearestCase{U'a', {U'y', U'q'}, U'y'}, NearestCase{U'a', {U'q', U'y'}, U'q'},
                    // Candidates that have no place are passed over, unless they come first.
                    NearestCase{U'a', {U'q', U'#', U's'}, U's'}, NearestCase{U'a', {U'#', U's'}, U'#'}));

struct VisualCase {
    int note;
    Character source;
    std::optional<Character> key;
};

class VisualKey : public testing::TestWithParam<VisualCase> {};

TEST_P(VisualKey, StandsForTheNoteInCMajor) {
    EXPECT_EQ(Resolver::visualKey(GetParam().note, GetParam().source, majorTriads(), german()),
              GetParam().key);
}

INSTANTIATE_TEST_SUITE_P(
    Notes, VisualKey,
    testing::Values(VisualCase{60, U'a', U'a'}, VisualCase{60, U',', U','}, VisualCase{60, U'A', U'a'},
                    // Played by two rows: the row of the source, whatever the column.
                    VisualCase{60, U'd', U'a'}, VisualCase{60, U'\u00E4', U'a'}, VisualCase{60, U'm', U','},
                    VisualCase{64, U'a', U'd'}, VisualCase{64, U'y', U'-'}, VisualCase{72, U'w', U'q'},
                    VisualCase{72, U'a', U'k'}, VisualCase{72, U'y', U'k'}, VisualCase{72, U'1', U'q'},
                    VisualCase{103, U'a', U'\u00B4'}, VisualCase{48, U'1', U'y'},
                    // Played by none: the nearest key of its pitch class.
                    VisualCase{40, U'a', U'd'}, VisualCase{40, U'y', U'c'}, VisualCase{40, U'q', U'e'},
                    VisualCase{40, U'p', U'p'}, VisualCase{108, U'a', U'a'}, VisualCase{108, U'k', U'k'},
                    VisualCase{-1, U'a', U'j'}, VisualCase{-12, U's', U'a'}, VisualCase{120, U's', U'a'},
                    // Not in the scale at all.
                    VisualCase{61, U'a', std::nullopt}, VisualCase{70, U'1', std::nullopt},
                    // From a key outside: the first in the order of the rows.
                    VisualCase{60, U';', U','}, VisualCase{40, U' ', U'c'},
                    VisualCase{61, U';', std::nullopt}));

TEST(VisualKeyScale, AnExactKeyOfTheSameRowIsTakenInAnyScale) {
    // Five notes an octave: 84 lies on the home row and on the two above it. From the third row its key is
    // itself; 72 lies on the home row at "h" and on the third at "q".
    auto state = majorTriads();
    state.scaleName = "Major Pentatonic";
    EXPECT_EQ(Resolver::visualKey(84, U'z', state, german()), U'z');
    EXPECT_EQ(Resolver::visualKey(84, U'q', state, german()), U'z');
    EXPECT_EQ(Resolver::visualKey(84, U'y', state, german()), U'\u00E4');
    state.scaleName = "Chromatic";
    EXPECT_EQ(Resolver::visualKey(100, U'd', state, german()), U'g');
    EXPECT_EQ(Resolver::visualKey(130, U'\u00E4', state, german()), U'\u00E4');
    EXPECT_EQ(Resolver::visualKey(131, U'a', state, german()), U'+');
}

TEST(VisualKeyView, IgnoresChordsComplexityLimitAndBass) {
    auto state = majorTriads(100);
    state.maxChordNotes = 1;
    state.bassNoteEnabled = true;
    state.chordMode = ChordMode::eleventh;
    EXPECT_EQ(Resolver::visualKey(64, U'a', state, german()), U'd');
}

TEST(VisualKeyView, KeepsTheOctavesOfTheMelodyRowsInSplitMode) {
    auto state = majorTriads();
    state.splitModeEnabled = true;
    state.melodyOctaveOffset = -1;
    EXPECT_EQ(Resolver::visualKey(60, U'q', state, german()), U'q');
    EXPECT_EQ(Resolver::visualKey(60, U'w', state, german()), U'q');
    EXPECT_EQ(Resolver::visualKey(96, U'a', state, german()), U'a');
}

struct VoicingCase {
    std::int64_t complexity;
    Character key;
    std::u32string keys;
};

class VoicingKeys : public testing::TestWithParam<VoicingCase> {};

TEST_P(VoicingKeys, StandInTheOrderOfTheNotes) {
    const auto keys =
        Resolver::orderedVoicingKeys(GetParam().key, majorTriads(GetParam().complexity), german());
    EXPECT_EQ(std::u32string(keys.begin(), keys.end()), GetParam().keys);
}

INSTANTIATE_TEST_SUITE_P(Voicings, VoicingKeys,
                         testing::Values(VoicingCase{0, U'a', U"adg"}, VoicingCase{0, U'A', U"adg"},
                                         VoicingCase{0, U'y', U"ycb"}, VoicingCase{25, U'a', U"dgk"},
                                         VoicingCase{50, U'a', U"a\u00F6"},
                                         VoicingCase{70, U'a', U"agj\u00F6"},
                                         VoicingCase{85, U'a', U"ajl\u00F6"},
                                         VoicingCase{100, U'a', U"ajl\u00F6\u00E4"},
                                         // 79 is played by the row above only.
                                         VoicingCase{0, U'k', U"k\u00F6t"},
                                         // 107 and 110 are played by no key.
                                         VoicingCase{0, U'\u00B4', U"\u00B479"}, VoicingCase{0, U' ', U""}));

TEST(VoicingKeysOnce, EvenWhenTwoNotesHaveTheSameKey) {
    auto state = majorTriads(50);
    state.globalOctaveOffset = 3;
    // 120 is not played with its third an octave up at 136, which is clamped onto the highest note.
    const auto keys = Resolver::orderedVoicingKeys(U'\u00B4', state, german());
    EXPECT_EQ(keys.size(), std::set<Character>(keys.begin(), keys.end()).size());
    EXPECT_EQ(keys, std::vector<Character>{U'\u00B4'});
}

TEST(HighlightedKeys, WithoutChordsAreTheActiveKeys) {
    auto state = majorTriads(100);
    state.chordMode = ChordMode::off;
    EXPECT_EQ(Resolver::highlightedKeys({U'A', U'q', U'#'}, state, german()), (Keys{U'a', U'q', U'#'}));
    EXPECT_TRUE(Resolver::highlightedKeys({}, state, german()).empty());
}

TEST(HighlightedKeys, AreThoseOfAllChordsTogether) {
    EXPECT_EQ(Resolver::highlightedKeys({U'a', U'd'}, majorTriads(), german()),
              (Keys{U'a', U'd', U'g', U'j'}));
    EXPECT_TRUE(Resolver::highlightedKeys({}, majorTriads(), german()).empty());
}

TEST(HighlightedKeys, HaveThePressedKeyEvenWhenItsNoteDoesNotSound) {
    // In the inversion the key's own note moves an octave up.
    EXPECT_EQ(Resolver::highlightedKeys({U'A'}, majorTriads(25), german()), (Keys{U'a', U'd', U'g', U'k'}));
    EXPECT_EQ(Resolver::highlightedKeys({U'#'}, majorTriads(), german()), Keys{U'#'});
}

TEST(HighlightedKeys, OfAMelodyKeyAreItself) {
    auto state = majorTriads();
    state.splitModeEnabled = true;
    EXPECT_EQ(Resolver::highlightedKeys({U'Q'}, state, german()), Keys{U'q'});
    EXPECT_EQ(Resolver::highlightedKeys({U'1', U'a'}, state, german()), (Keys{U'1', U'a', U'd', U'g'}));
    state.splitModeEnabled = false;
    EXPECT_EQ(Resolver::highlightedKeys({U'q'}, state, german()), (Keys{U'q', U'e', U't'}));
}

TEST(HighlightedKeys, AreLimitedLikeTheChord) {
    auto state = majorTriads();
    state.maxChordNotes = 2;
    EXPECT_EQ(Resolver::highlightedKeys({U'a'}, state, german()), (Keys{U'a', U'g'}));
}

} // namespace
} // namespace tavro
