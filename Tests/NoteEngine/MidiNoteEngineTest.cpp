#include "NoteEngine/EventTexts.h"

#include <gmock/gmock.h>

#include <cstdint>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(MidiNoteEngine, StartsSilent) {
    Player player;
    EXPECT_THAT(player.engine.activeNotesByKey(), IsEmpty());
    EXPECT_EQ(player.engine.currentBassNote(), std::nullopt);
    EXPECT_THAT(player.engine.activeChordNotes(player.state), IsEmpty());
    EXPECT_THAT(player.engine.smartInputNotes(), IsEmpty());
    EXPECT_EQ(player.engine.layout(), KeyboardLayout::scaleRowsQWERTZ());
}

TEST(MidiNoteEngine, SoundsAKeyFromPressToRelease) {
    Player player;
    player.state = plainNotes();
    EXPECT_THAT(player.down(U'a'), ElementsAre("on 60 a"));
    EXPECT_THAT(player.up(U'a'), ElementsAre("off 60 a"));
    EXPECT_THAT(player.engine.activeNotesByKey(), IsEmpty());
}

TEST(MidiNoteEngine, SoundsTheNotesOfAChordFromLowToHigh) {
    Player player;
    EXPECT_THAT(player.down(U'a'), ElementsAre("on 60 a", "on 64 a", "on 67 a"));
    EXPECT_THAT(player.engine.activeNotesByKey(), ElementsAre(testing::Pair(U'a', ElementsAre(60, 64, 67))));
    EXPECT_THAT(player.up(U'a'), ElementsAre("off 60 a", "off 64 a", "off 67 a"));
}

TEST(MidiNoteEngine, IgnoresTheSecondPressOfAHeldKey) {
    Player player;
    (void)player.down(U'a');
    const auto before = player.engine.activeNotesByKey();
    EXPECT_THAT(player.down(U'a'), IsEmpty());
    EXPECT_THAT(player.down(U'A'), IsEmpty());
    EXPECT_EQ(player.engine.activeNotesByKey(), before);
}

TEST(MidiNoteEngine, TakesUpperCaseForLowerCase) {
    Player player;
    player.state = plainNotes();
    EXPECT_THAT(player.down(U'\u00D6'), ElementsAre("on 76 \u00F6"));
    EXPECT_THAT(player.up(U'\u00F6'), ElementsAre("off 76 \u00F6"));
    EXPECT_THAT(player.down(U's'), ElementsAre("on 62 s"));
    EXPECT_THAT(player.up(U'S'), ElementsAre("off 62 s"));
}

TEST(MidiNoteEngine, IgnoresKeysThatAreNotInTheLayout) {
    Player player;
    for (const Character key : {U';', U' ', U'^', noKey}) {
        for (const bool smart : {false, true}) {
            player.state.smartHoldMode = smart;
            EXPECT_THAT(player.down(key), IsEmpty());
            EXPECT_THAT(player.up(key), IsEmpty());
        }
    }
    EXPECT_THAT(player.engine.activeNotesByKey(), IsEmpty());
}

TEST(MidiNoteEngine, IgnoresReleasesOfKeysThatDoNotSound) {
    Player player;
    EXPECT_THAT(player.up(U'a'), IsEmpty());
    (void)player.down(U's');
    EXPECT_THAT(player.up(U'a'), IsEmpty());
    EXPECT_THAT(player.engine.activeNotesByKey(), testing::SizeIs(1));
}

TEST(MidiNoteEngine, TurnsOffWhatItTurnedOnWhateverTheSettingsBecame) {
    Player player;
    (void)player.down(U'a');
    player.state.rootSemitone = 5;
    player.state.scaleName = "Dorian";
    player.state.globalOctaveOffset = 2;
    player.state.chordMode = ChordMode::off;
    EXPECT_THAT(player.up(U'a'), ElementsAre("off 60 a", "off 64 a", "off 67 a"));
}

TEST(MidiNoteEngine, SoundsANoteForEachKeyThatHasIt) {
    Player player;
    player.state = plainNotes();
    EXPECT_THAT(player.down(U'a'), ElementsAre("on 60 a"));
    EXPECT_THAT(player.down(U','), ElementsAre("on 60 ,"));
    EXPECT_THAT(player.engine.activeChordNotes(player.state), ElementsAre(60, 60));
    EXPECT_THAT(player.up(U'a'), ElementsAre("off 60 a"));
    EXPECT_THAT(player.engine.activeChordNotes(player.state), ElementsAre(60));
}

TEST(MidiNoteEngine, GathersTheNotesOfAllChordKeysInOrder) {
    Player player;
    (void)player.down(U'd');
    (void)player.down(U'a');
    EXPECT_THAT(player.engine.activeChordNotes(player.state), ElementsAre(60, 64, 64, 67, 67, 71));
}

struct ChannelCase {
    std::int64_t channel;
    const char* on;
    const char* off;
};

class EventChannel : public testing::TestWithParam<ChannelCase> {};

TEST_P(EventChannel, IsThatOfTheStateWithinSixteen) {
    Player player;
    player.state = plainNotes();
    player.state.midiChannel = GetParam().channel;
    EXPECT_THAT(player.down(U'a'), ElementsAre(GetParam().on));
    EXPECT_THAT(player.up(U'a'), ElementsAre(GetParam().off));
    (void)player.down(U'a');
    EXPECT_THAT(player.panic(), ElementsAre(GetParam().off));
}

INSTANTIATE_TEST_SUITE_P(Channels, EventChannel,
                         testing::Values(ChannelCase{1, "on 60 a", "off 60 a"},
                                         ChannelCase{0, "on 60 a", "off 60 a"},
                                         ChannelCase{-7, "on 60 a", "off 60 a"},
                                         ChannelCase{5, "on 60 a channel 5", "off 60 a channel 5"},
                                         ChannelCase{16, "on 60 a channel 16", "off 60 a channel 16"},
                                         ChannelCase{99, "on 60 a channel 16", "off 60 a channel 16"}));

TEST(MidiNoteEngine, TakesTheVelocityOfEachPress) {
    Player player;
    player.state = plainNotes();
    player.state.velocity = 40;
    EXPECT_THAT(player.down(U'a'), ElementsAre("on 60 a velocity 40"));
    player.state.velocity = 200;
    EXPECT_THAT(player.down(U's'), ElementsAre("on 62 s velocity 127"));
    EXPECT_THAT(player.up(U'a'), ElementsAre("off 60 a"));
}

TEST(MidiNoteEngine, AsksItsRandomSourceForHumanizing) {
    int draws = 0;
    MidiNoteEngine engine(KeyboardLayout::scaleRowsQWERTZ(), [&draws] {
        ++draws;
        return 0x40000000U;
    });
    auto state = plainTriads();
    state.humanizeVelocity = 7;
    for (const auto& event : engine.keyDown(U'a', state)) {
        EXPECT_GE(event.velocity, 93);
        EXPECT_LE(event.velocity, 107);
    }
    EXPECT_EQ(draws, 3);
}

} // namespace
} // namespace tavro
