#include "Platform/Linux/Alsa/SequencerPort.h"

#include <gtest/gtest.h>

namespace tavro::alsa {
namespace {

std::string displayName(std::string client, std::string port) {
    return SequencerPort{{}, std::move(client), std::move(port)}.displayName();
}

TEST(SequencerPort, IsKnownByItsProgram) {
    EXPECT_EQ(displayName("Synth (77)", "input 1"), "Synth (77) input 1");
    EXPECT_EQ(displayName("Öl", "öl"), "Öl öl");
}

TEST(SequencerPort, ProgramIsNotNamedTwice) {
    EXPECT_EQ(displayName("Midi Through", "Midi Through Port-0"), "Midi Through Port-0");
    EXPECT_EQ(displayName("Synth", "Synth:in"), "Synth:in");
    EXPECT_EQ(displayName("Synth", "Synth"), "Synth");
}

TEST(SequencerPort, BeginningOfAWordIsNotTheProgramsName) {
    EXPECT_EQ(displayName("Synth", "Synthesizer in"), "Synth Synthesizer in");
    EXPECT_EQ(displayName("Synth", "Synth2"), "Synth Synth2");
    EXPECT_EQ(displayName("Synth", "Synthé"), "Synth Synthé");
}

TEST(SequencerPort, WithoutOneOfTheNames) {
    EXPECT_EQ(displayName("Synth", ""), "Synth");
    EXPECT_EQ(displayName("", "in"), "in");
    EXPECT_EQ(displayName("", ""), "");
}

} // namespace
} // namespace tavro::alsa
