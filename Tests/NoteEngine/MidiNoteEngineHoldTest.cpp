#include "NoteEngine/EventTexts.h"

#include <gmock/gmock.h>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The caller keeps the releases of latched keys back, so these tests only press.
class Hold : public testing::Test {
protected:
    Hold() { player.state.holdMode = true; }

    Player player;
};

TEST_F(Hold, ASecondPressReleasesTheKey) {
    EXPECT_THAT(player.down(U'a'), ElementsAre("on 60 a", "on 64 a", "on 67 a"));
    EXPECT_THAT(player.down(U'a'), ElementsAre("off 60 a", "off 64 a", "off 67 a"));
    EXPECT_THAT(player.engine.activeNotesByKey(), IsEmpty());
    EXPECT_THAT(player.down(U'a'), ElementsAre("on 60 a", "on 64 a", "on 67 a"));
}

TEST_F(Hold, ASecondPressReleasesWhatTheFirstSounded) {
    (void)player.down(U'a');
    player.state.rootSemitone = 7;
    EXPECT_THAT(player.down(U'a'), ElementsAre("off 60 a", "off 64 a", "off 67 a"));
}

TEST_F(Hold, KeysLatchNextToEachOther) {
    (void)player.down(U'a');
    EXPECT_THAT(player.down(U's'), ElementsAre("on 62 s", "on 65 s", "on 69 s"));
    EXPECT_THAT(player.down(U'a'), ElementsAre("off 60 a", "off 64 a", "off 67 a"));
    EXPECT_THAT(player.engine.activeChordNotes(player.state), ElementsAre(62, 65, 69));
}

TEST_F(Hold, TheLastChordKeyTakesTheBassWithIt) {
    player.state.bassNoteEnabled = true;
    EXPECT_THAT(player.down(U'a'), ElementsAre("on 60 a", "on 64 a", "on 67 a", "on 48 a"));
    (void)player.down(U's');
    EXPECT_THAT(player.down(U'a'), ElementsAre("off 60 a", "off 64 a", "off 67 a"));
    EXPECT_THAT(player.down(U's'), ElementsAre("off 62 s", "off 65 s", "off 69 s", "off 48 s"));
    EXPECT_EQ(player.engine.currentBassNote(), std::nullopt);
}

TEST_F(Hold, AReleaseThatIsPassedOnEndsTheKey) {
    (void)player.down(U'a');
    EXPECT_THAT(player.up(U'a'), ElementsAre("off 60 a", "off 64 a", "off 67 a"));
}

TEST_F(Hold, SingleNotesLatchToo) {
    player.state.chordMode = ChordMode::off;
    EXPECT_THAT(player.down(U'q'), ElementsAre("on 72 q"));
    EXPECT_THAT(player.down(U'q'), ElementsAre("off 72 q"));
}

TEST_F(Hold, GivesWayToSmartHold) {
    player.state.smartHoldMode = true;
    (void)player.down(U'a');
    EXPECT_THAT(player.down(U'a'),
                ElementsAre("off 60 a", "off 64 a", "off 67 a", "on 60 a", "on 64 a", "on 67 a"));
    EXPECT_THAT(player.up(U'a'), IsEmpty());
    EXPECT_THAT(player.down(U's'),
                ElementsAre("off 60 a", "off 64 a", "off 67 a", "on 62 s", "on 65 s", "on 69 s"));
}

} // namespace
} // namespace tavro
