#include "Player/DestinationChoice.h"

#include <gtest/gtest.h>

namespace tavro {
namespace {

const std::vector<MidiDestination> destinations{
    {.id = 5, .name = "Synth"}, {.id = 6, .name = "Twin"}, {.id = 7, .name = "Twin"}, {.id = 8, .name = "5"}};

std::string errorOf(std::span<const MidiDestination> there, std::string_view wanted) {
    try {
        (void)DestinationChoice::find(there, wanted);
    } catch (const DestinationChoice::Error& error) {
        return error.what();
    }
    return "no error";
}

TEST(DestinationChoice, findsByTheExactName) {
    EXPECT_EQ(DestinationChoice::find(destinations, "Synth"), 5U);
    EXPECT_EQ(errorOf(destinations, "synth"),
              "there is no destination \"synth\"; there are:\n5\tSynth\n6\tTwin\n7\tTwin\n8\t5");
    EXPECT_EQ(errorOf({}, "Synth"), "there is no destination \"Synth\", and no other");
}

TEST(DestinationChoice, asksForTheNumberWhereANameIsNotEnough) {
    EXPECT_EQ(errorOf(destinations, "Twin"), "2 destinations are called \"Twin\"; give the number of the one "
                                             "you mean instead of its name:\n6\tTwin\n7\tTwin");
    EXPECT_EQ(DestinationChoice::find(destinations, "7"), 7U);
}

TEST(DestinationChoice, namesStandAboveNumbers) {
    EXPECT_EQ(DestinationChoice::find(destinations, "5"), 8U);
    EXPECT_NE(errorOf(destinations, "05"), "no error");
}

} // namespace
} // namespace tavro
