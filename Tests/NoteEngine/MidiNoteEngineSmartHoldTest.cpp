#include "NoteEngine/EventTexts.h"

#include <gmock/gmock.h>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SmartHold : public testing::Test {
protected:
    SmartHold() { player.state.smartHoldMode = true; }

    Player player;
};

TEST_F(SmartHold, AChordSoundsOnUntilTheNextStarts) {
    EXPECT_THAT(player.down(U'a'), ElementsAre("on 60 a", "on 64 a", "on 67 a"));
    EXPECT_THAT(player.up(U'a'), IsEmpty());
    EXPECT_THAT(player.engine.activeChordNotes(player.state), ElementsAre(60, 64, 67));
    EXPECT_THAT(player.down(U's'),
                ElementsAre("off 60 a", "off 64 a", "off 67 a", "on 62 s", "on 65 s", "on 69 s"));
    EXPECT_THAT(player.engine.activeChordNotes(player.state), ElementsAre(62, 65, 69));
}

TEST_F(SmartHold, AKeyPressedWhileAnotherIsHeldJoinsTheCluster) {
    (void)player.down(U'a');
    EXPECT_THAT(player.down(U's'), ElementsAre("on 62 s", "on 65 s", "on 69 s"));
    EXPECT_THAT(player.engine.smartInputNotes(), ElementsAre(60, 62, 64, 65, 67, 69));
    EXPECT_THAT(player.up(U'a'), IsEmpty());
    EXPECT_THAT(player.engine.smartInputNotes(), ElementsAre(62, 65, 69));
    EXPECT_THAT(player.engine.activeChordNotes(player.state), ElementsAre(60, 62, 64, 65, 67, 69));
    EXPECT_THAT(player.down(U'd'), ElementsAre("on 64 d", "on 67 d", "on 71 d"));
}

TEST_F(SmartHold, ACompleteRoundWithBass) {
    player.state.bassNoteEnabled = true;
    EXPECT_THAT(player.down(U'a'), ElementsAre("on 60 a", "on 64 a", "on 67 a", "on 48 a"));
    // The six notes together are a C 6/9 with a fourth: the bass stays where it is.
    EXPECT_THAT(player.down(U's'), ElementsAre("on 62 s", "on 65 s", "on 69 s"));
    EXPECT_THAT(player.up(U'a'), IsEmpty());
    EXPECT_THAT(player.up(U's'), IsEmpty());
    EXPECT_THAT(player.down(U'd'),
                ElementsAre("off 60 a", "off 64 a", "off 67 a", "off 62 s", "off 65 s", "off 69 s",
                            "off 48 -", "on 64 d", "on 67 d", "on 71 d", "on 52 d"));
    EXPECT_EQ(player.engine.currentBassNote(), 52);
}

TEST_F(SmartHold, TheBassFollowsTheWholeCluster) {
    player.state.bassNoteEnabled = true;
    EXPECT_THAT(player.down(U'd'), ElementsAre("on 64 d", "on 67 d", "on 71 d", "on 52 d"));
    EXPECT_THAT(player.down(U'a'), ElementsAre("on 60 a", "on 64 a", "on 67 a", "off 52 a", "on 48 a"));
}

TEST_F(SmartHold, TheBassFollowsTheHeldKeysOnly) {
    player.state.bassNoteEnabled = true;
    (void)player.down(U'a');
    (void)player.down(U's');
    (void)player.up(U'a');
    // Held are s and d: D F A and E G B over D read as a Dm6; the C below them is not held any more.
    EXPECT_THAT(player.down(U'd'), ElementsAre("on 64 d", "on 67 d", "on 71 d", "off 48 d", "on 50 d"));
}

TEST_F(SmartHold, AnActiveKeyIsStruckAgain) {
    (void)player.down(U'a');
    (void)player.down(U's');
    EXPECT_THAT(player.down(U'a'),
                ElementsAre("off 60 a", "off 64 a", "off 67 a", "on 60 a", "on 64 a", "on 67 a"));
    EXPECT_THAT(player.engine.activeChordNotes(player.state), ElementsAre(60, 62, 64, 65, 67, 69));
}

TEST_F(SmartHold, AnActiveKeyIsStruckAgainWithItsBass) {
    player.state.bassNoteEnabled = true;
    (void)player.down(U'a');
    (void)player.up(U'a');
    EXPECT_THAT(player.down(U'a'), ElementsAre("off 60 a", "off 64 a", "off 67 a", "off 48 a", "on 60 a",
                                               "on 64 a", "on 67 a", "on 48 a"));
}

TEST_F(SmartHold, AReleasedButSoundingKeyIsStruckAgainWithoutEndingTheOthers) {
    (void)player.down(U'a');
    (void)player.down(U's');
    (void)player.up(U'a');
    (void)player.up(U's');
    EXPECT_THAT(player.down(U'a'),
                ElementsAre("off 60 a", "off 64 a", "off 67 a", "on 60 a", "on 64 a", "on 67 a"));
    EXPECT_THAT(player.engine.activeNotesByKey(), testing::SizeIs(2));
    EXPECT_THAT(player.engine.smartInputNotes(), ElementsAre(60, 64, 67));
}

TEST_F(SmartHold, AStruckKeyTakesTheNewSettings) {
    (void)player.down(U'a');
    player.state.rootSemitone = 2;
    EXPECT_THAT(player.down(U'a'),
                ElementsAre("off 60 a", "off 64 a", "off 67 a", "on 62 a", "on 66 a", "on 69 a"));
}

TEST_F(SmartHold, OffMakesReleasesEndTheirKeysAgain) {
    (void)player.down(U'a');
    player.state.smartHoldMode = false;
    EXPECT_THAT(player.up(U'a'), ElementsAre("off 60 a", "off 64 a", "off 67 a"));
}

TEST_F(SmartHold, PanicEndsTheCluster) {
    (void)player.down(U'a');
    EXPECT_THAT(player.panic(), ElementsAre("off 60 a", "off 64 a", "off 67 a"));
    EXPECT_THAT(player.engine.smartInputNotes(), IsEmpty());
    // No key counts as held any more: the next two presses, one after the other, are two clusters.
    (void)player.down(U's');
    (void)player.up(U's');
    EXPECT_THAT(player.down(U'd'),
                ElementsAre("off 62 s", "off 65 s", "off 69 s", "on 64 d", "on 67 d", "on 71 d"));
}

} // namespace
} // namespace tavro
