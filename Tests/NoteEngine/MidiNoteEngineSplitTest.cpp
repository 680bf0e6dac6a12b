#include "NoteEngine/EventTexts.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <limits>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Split : public testing::Test {
protected:
    Split() { player.state.splitModeEnabled = true; }

    Player player;
};

TEST_F(Split, TheUpperRowsPlaySingleNotesAndTheLowerRowsChords) {
    EXPECT_THAT(player.down(U'y'), ElementsAre("on 48 y", "on 52 y", "on 55 y"));
    EXPECT_THAT(player.down(U'a'), ElementsAre("on 60 a", "on 64 a", "on 67 a"));
    EXPECT_THAT(player.down(U'q'), ElementsAre("on 72 q"));
    EXPECT_THAT(player.down(U'1'), ElementsAre("on 84 1"));
    EXPECT_THAT(player.up(U'q'), ElementsAre("off 72 q"));
}

TEST_F(Split, MelodyKeysIgnoreComplexityAndLimit) {
    player.state.voicingComplexity = 100;
    player.state.maxChordNotes = 1;
    EXPECT_THAT(player.down(U'w'), ElementsAre("on 74 w"));
}

struct OctaveCase {
    std::int64_t octaves;
    int note;
};

class MelodyOctave : public testing::TestWithParam<OctaveCase> {};

TEST_P(MelodyOctave, MovesMelodyKeysOnly) {
    Player player;
    player.state.splitModeEnabled = true;
    player.state.melodyOctaveOffset = GetParam().octaves;
    EXPECT_THAT(player.engine.notesForKey(U'q', player.state), ElementsAre(GetParam().note));
    EXPECT_THAT(player.engine.notesForKey(U'a', player.state), ElementsAre(60, 64, 67));
    player.state.chordMode = ChordMode::off;
    EXPECT_THAT(player.engine.notesForKey(U'q', player.state), ElementsAre(GetParam().note));
    EXPECT_THAT(player.engine.notesForKey(U'a', player.state), ElementsAre(60));
    player.state.splitModeEnabled = false;
    EXPECT_THAT(player.engine.notesForKey(U'q', player.state), ElementsAre(72));
}

INSTANTIATE_TEST_SUITE_P(Octaves, MelodyOctave,
                         testing::Values(OctaveCase{0, 72}, OctaveCase{1, 84}, OctaveCase{-3, 36},
                                         OctaveCase{3, 108}, OctaveCase{9, 127}, OctaveCase{-9, 0},
                                         OctaveCase{std::numeric_limits<std::int64_t>::max(), 127},
                                         OctaveCase{std::numeric_limits<std::int64_t>::min(), 0}));

TEST_F(Split, MelodyNotesAreNoChordNotes) {
    (void)player.down(U'a');
    (void)player.down(U'q');
    EXPECT_THAT(player.engine.activeChordNotes(player.state), ElementsAre(60, 64, 67));
    player.state.splitModeEnabled = false;
    EXPECT_THAT(player.engine.activeChordNotes(player.state), ElementsAre(60, 64, 67, 72));
}

TEST_F(Split, MelodyKeysIgnoreTheirSecondPress) {
    (void)player.down(U'q');
    EXPECT_THAT(player.down(U'q'), IsEmpty());
    EXPECT_THAT(player.down(U'Q'), IsEmpty());
}

TEST_F(Split, HoldDoesNotLatchMelodyKeys) {
    player.state.holdMode = true;
    EXPECT_THAT(player.down(U'q'), ElementsAre("on 72 q"));
    EXPECT_THAT(player.down(U'q'), IsEmpty());
    EXPECT_THAT(player.up(U'q'), ElementsAre("off 72 q"));
}

TEST_F(Split, SmartHoldDoesNotSustainMelodyKeys) {
    player.state.smartHoldMode = true;
    EXPECT_THAT(player.down(U'q'), ElementsAre("on 72 q"));
    EXPECT_THAT(player.engine.smartInputNotes(), IsEmpty());
    EXPECT_THAT(player.up(U'q'), ElementsAre("off 72 q"));
}

TEST_F(Split, ANewSmartHoldChordLetsTheMelodySound) {
    player.state.smartHoldMode = true;
    (void)player.down(U'a');
    (void)player.up(U'a');
    (void)player.down(U'q');
    EXPECT_THAT(player.down(U's'),
                ElementsAre("off 60 a", "off 64 a", "off 67 a", "on 62 s", "on 65 s", "on 69 s"));
    EXPECT_THAT(player.up(U'q'), ElementsAre("off 72 q"));
}

TEST_F(Split, MelodyKeysDoNotTouchTheBass) {
    player.state.bassNoteEnabled = true;
    EXPECT_THAT(player.down(U'q'), ElementsAre("on 72 q"));
    EXPECT_THAT(player.down(U'a'), ElementsAre("on 60 a", "on 64 a", "on 67 a", "on 48 a"));
    EXPECT_THAT(player.down(U'w'), ElementsAre("on 74 w"));
    EXPECT_THAT(player.up(U'w'), ElementsAre("off 74 w"));
    EXPECT_THAT(player.up(U'a'), ElementsAre("off 60 a", "off 64 a", "off 67 a", "off 48 a"));
    EXPECT_THAT(player.up(U'q'), ElementsAre("off 72 q"));
}

TEST_F(Split, MelodyKeysTakeNoPlaceOfTheBass) {
    player.state.bassNoteEnabled = true;
    player.state.maxChordNotes = 4;
    (void)player.down(U'q');
    (void)player.down(U'w');
    EXPECT_THAT(player.down(U'a'), ElementsAre("on 60 a", "on 64 a", "on 67 a", "on 48 a"));
}

TEST_F(Split, TheReleaseOfASilentMelodyKeyDoesNothing) {
    EXPECT_THAT(player.up(U'q'), IsEmpty());
}

TEST_F(Split, PanicEndsTheMelodyToo) {
    (void)player.down(U'q');
    EXPECT_THAT(player.panic(), ElementsAre("off 72 q"));
}

} // namespace
} // namespace tavro
