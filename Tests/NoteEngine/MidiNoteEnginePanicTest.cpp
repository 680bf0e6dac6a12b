#include "NoteEngine/EventTexts.h"

#include <gmock/gmock.h>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Panic, WithNothingSoundingDoesNothing) {
    Player player;
    EXPECT_THAT(player.panic(), IsEmpty());
}

TEST(Panic, EndsEverythingAndForgetsIt) {
    Player player;
    player.state.bassNoteEnabled = true;
    (void)player.down(U'a');
    (void)player.down(U'f');
    const auto ended = player.panic();
    EXPECT_THAT(ended, testing::UnorderedElementsAre("off 60 a", "off 64 a", "off 67 a", "off 65 f",
                                                     "off 69 f", "off 72 f", "off 48 -"));
    EXPECT_EQ(ended.back(), "off 48 -");
    EXPECT_THAT(player.engine.activeNotesByKey(), IsEmpty());
    EXPECT_EQ(player.engine.currentBassNote(), std::nullopt);
    EXPECT_THAT(player.panic(), IsEmpty());
    EXPECT_THAT(player.up(U'a'), IsEmpty());
    EXPECT_THAT(player.down(U'a'), ElementsAre("on 60 a", "on 64 a", "on 67 a", "on 48 a"));
}

TEST(Panic, UsesTheChannelThatItIsGiven) {
    Player player;
    player.state = plainNotes();
    player.state.bassNoteEnabled = true;
    (void)player.down(U'a');
    EXPECT_THAT(texts(player.engine.panic(20)), ElementsAre("off 60 a channel 16", "off 48 - channel 16"));
    (void)player.down(U'a');
    EXPECT_THAT(texts(player.engine.panic(-1)), ElementsAre("off 60 a", "off 48 -"));
}

} // namespace
} // namespace tavro
