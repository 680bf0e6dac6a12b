#include "NoteEngine/EventTexts.h"

#include <gmock/gmock.h>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Bass : public testing::Test {
protected:
    Bass() { player.state.bassNoteEnabled = true; }

    Player player;
};

TEST_F(Bass, SoundsLastUnderTheChordAndEndsWithIt) {
    EXPECT_THAT(player.down(U'a'), ElementsAre("on 60 a", "on 64 a", "on 67 a", "on 48 a"));
    EXPECT_EQ(player.engine.currentBassNote(), 48);
    EXPECT_THAT(player.up(U'a'), ElementsAre("off 60 a", "off 64 a", "off 67 a", "off 48 a"));
    EXPECT_EQ(player.engine.currentBassNote(), std::nullopt);
}

TEST_F(Bass, LiesTwoOctavesDownOnRequest) {
    player.state.bassOctaveDown = 2;
    EXPECT_THAT(player.down(U'a'), ElementsAre("on 60 a", "on 64 a", "on 67 a", "on 36 a"));
}

TEST_F(Bass, MovesWithTheChordAtAPress) {
    EXPECT_THAT(player.down(U'd'), ElementsAre("on 64 d", "on 67 d", "on 71 d", "on 52 d"));
    EXPECT_THAT(player.down(U'a'), ElementsAre("on 60 a", "on 64 a", "on 67 a", "off 52 a", "on 48 a"));
}

TEST_F(Bass, StaysWhenItIsTheSame) {
    (void)player.down(U'a');
    EXPECT_THAT(player.down(U's'), ElementsAre("on 62 s", "on 65 s", "on 69 s"));
    EXPECT_EQ(player.engine.currentBassNote(), 48);
}

TEST_F(Bass, IsNotDetectedAgainAtARelease) {
    (void)player.down(U'a');
    (void)player.down(U's');
    EXPECT_THAT(player.up(U'a'), ElementsAre("off 60 a", "off 64 a", "off 67 a"));
    EXPECT_EQ(player.engine.currentBassNote(), 48);
    // E G B and D F A together are over D.
    EXPECT_THAT(player.down(U'd'), ElementsAre("on 64 d", "on 67 d", "on 71 d", "off 48 d", "on 50 d"));
}

TEST_F(Bass, EndsWithTheLastChordKey) {
    (void)player.down(U'a');
    (void)player.down(U's');
    EXPECT_THAT(player.up(U's'), ElementsAre("off 62 s", "off 65 s", "off 69 s"));
    EXPECT_THAT(player.up(U'a'), ElementsAre("off 60 a", "off 64 a", "off 67 a", "off 48 a"));
}

TEST_F(Bass, StaysUnderNotesThatMakeNoChord) {
    player.state = plainNotes();
    player.state.scaleName = "Chromatic";
    player.state.bassNoteEnabled = true;
    EXPECT_THAT(player.down(U'a'), ElementsAre("on 60 a", "on 48 a"));
    EXPECT_THAT(player.down(U's'), ElementsAre("on 61 s"));
    EXPECT_THAT(player.down(U'd'), ElementsAre("on 62 d"));
    EXPECT_EQ(player.engine.currentBassNote(), 48);
}

TEST_F(Bass, SwitchedOffStaysUntilTheChordEnds) {
    (void)player.down(U'a');
    player.state.bassNoteEnabled = false;
    EXPECT_THAT(player.down(U'd'), ElementsAre("on 64 d", "on 67 d", "on 71 d"));
    EXPECT_THAT(player.up(U'a'), ElementsAre("off 60 a", "off 64 a", "off 67 a"));
    EXPECT_THAT(player.up(U'd'), ElementsAre("off 64 d", "off 67 d", "off 71 d", "off 48 d"));
}

TEST_F(Bass, SwitchedOnComesWithTheNextPress) {
    player.state.bassNoteEnabled = false;
    EXPECT_THAT(player.down(U'a'), ElementsAre("on 60 a", "on 64 a", "on 67 a"));
    player.state.bassNoteEnabled = true;
    EXPECT_THAT(player.down(U's'), ElementsAre("on 62 s", "on 65 s", "on 69 s", "on 48 s"));
}

TEST_F(Bass, OfASingleNoteIsThatNoteFurtherDown) {
    player.state.chordMode = ChordMode::off;
    EXPECT_THAT(player.down(U'd'), ElementsAre("on 64 d", "on 52 d"));
    EXPECT_THAT(player.up(U'd'), ElementsAre("off 64 d", "off 52 d"));
    player.state.bassOctaveDown = 2;
    EXPECT_THAT(player.down(U'd'), ElementsAre("on 64 d", "on 40 d"));
}

TEST_F(Bass, HasNoRoomWhenTheLimitIsReached) {
    player.state.maxChordNotes = 4;
    EXPECT_THAT(player.down(U'a'), ElementsAre("on 60 a", "on 64 a", "on 67 a", "on 48 a"));
    EXPECT_THAT(player.down(U's'), ElementsAre("on 62 s", "on 65 s", "on 69 s", "off 48 s"));
    EXPECT_EQ(player.engine.currentBassNote(), std::nullopt);
    EXPECT_THAT(player.up(U's'), ElementsAre("off 62 s", "off 65 s", "off 69 s"));
    EXPECT_THAT(player.up(U'a'), ElementsAre("off 60 a", "off 64 a", "off 67 a"));
}

TEST_F(Bass, HasNoRoomBesideTheOnlyNoteAllowed) {
    player.state.maxChordNotes = 1;
    EXPECT_THAT(player.down(U'a'), ElementsAre("on 60 a"));
    EXPECT_EQ(player.engine.currentBassNote(), std::nullopt);
}

TEST_F(Bass, IsLimitedToSixteenNotesByAHigherLimit) {
    player.state.maxChordNotes = 100;
    for (const Character key : {U'a', U's', U'd', U'f', U'g'}) {
        (void)player.down(key);
    }
    EXPECT_NE(player.engine.currentBassNote(), std::nullopt);
    (void)player.down(U'h');
    EXPECT_EQ(player.engine.currentBassNote(), std::nullopt);
}

TEST_F(Bass, HasRoomUnderAnyNumberOfNotesWithoutALimit) {
    player.state.maxChordNotes = 0;
    for (const Character key : {U'a', U's', U'd', U'f', U'g', U'h', U'j'}) {
        (void)player.down(key);
    }
    EXPECT_EQ(player.engine.activeChordNotes(player.state).size(), 21U);
    EXPECT_NE(player.engine.currentBassNote(), std::nullopt);
}

TEST_F(Bass, HasItsOwnVelocity) {
    player.state.velocity = 20;
    EXPECT_THAT(player.down(U'a'), ElementsAre("on 60 a velocity 20", "on 64 a velocity 20",
                                               "on 67 a velocity 20", "on 48 a velocity 20"));
    EXPECT_THAT(player.up(U'a'), ElementsAre("off 60 a", "off 64 a", "off 67 a", "off 48 a"));
}

} // namespace
} // namespace tavro
