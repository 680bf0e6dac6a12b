#include "Platform/Linux/Alsa/DestinationIdentifiers.h"

#include <gtest/gtest.h>

namespace tavro::alsa {
namespace {

const SequencerPort synth{{129, 0}, "Synth", "in"};
const SequencerPort sampler{{129, 0}, "Sampler", "in"};

TEST(DestinationIdentifiers, NumberIsTheAddress) {
    DestinationIdentifiers identifiers;
    EXPECT_EQ(identifiers.identifierOf(synth), 129U << 8U);
    EXPECT_EQ(identifiers.identifierOf({{129, 1}, "Synth", "in"}), (129U << 8U) + 1);
    EXPECT_EQ(identifiers.identifierOf({{14, 3}, "Midi Through", "Port-3"}), (14U << 8U) + 3);
    EXPECT_EQ(identifiers.identifierOf(synth), 129U << 8U);
}

TEST(DestinationIdentifiers, TwoOfOneNameAreTwo) {
    DestinationIdentifiers identifiers;
    const auto first = identifiers.identifierOf(synth);
    const auto second = identifiers.identifierOf({{130, 0}, synth.clientName, synth.portName});
    EXPECT_NE(first, second);
    ASSERT_NE(identifiers.port(second), nullptr);
    EXPECT_EQ(identifiers.port(second)->address, (PortAddress{130, 0}));
}

TEST(DestinationIdentifiers, RenamedPortKeepsItsNumber) {
    DestinationIdentifiers identifiers;
    const auto number = identifiers.identifierOf(synth);
    EXPECT_EQ(identifiers.identifierOf(sampler), number);
    EXPECT_EQ(*identifiers.port(number), sampler);
    EXPECT_TRUE(identifiers.isThere(number));
}

TEST(DestinationIdentifiers, AddressTakenByAnotherIsAnotherDestination) {
    DestinationIdentifiers identifiers;
    const auto gone = identifiers.identifierOf(synth);
    identifiers.portHasGone(synth.address);
    EXPECT_FALSE(identifiers.isThere(gone));

    const auto next = identifiers.identifierOf(sampler);
    EXPECT_NE(next, gone);
    EXPECT_EQ(next & 0xFFFFU, gone);
    EXPECT_TRUE(identifiers.isThere(next));
    EXPECT_FALSE(identifiers.isThere(gone));
    EXPECT_EQ(*identifiers.port(gone), synth);
    EXPECT_EQ(*identifiers.port(next), sampler);
}

TEST(DestinationIdentifiers, PortThatReturnsIsTheSame) {
    DestinationIdentifiers identifiers;
    const auto first = identifiers.identifierOf(synth);
    identifiers.portHasGone(synth.address);
    const auto second = identifiers.identifierOf(sampler);
    identifiers.portHasGone(synth.address);
    EXPECT_EQ(identifiers.identifierOf(synth), first);
    EXPECT_TRUE(identifiers.isThere(first));
    EXPECT_FALSE(identifiers.isThere(second));
    identifiers.portHasGone(synth.address);
    EXPECT_EQ(identifiers.identifierOf(sampler), second);
}

TEST(DestinationIdentifiers, PortReturnsUnderTheNameItWasGivenLast) {
    DestinationIdentifiers identifiers;
    const auto number = identifiers.identifierOf(synth);
    EXPECT_EQ(identifiers.identifierOf(sampler), number);
    identifiers.portHasGone(synth.address);
    EXPECT_EQ(identifiers.identifierOf(sampler), number);
}

TEST(DestinationIdentifiers, ClientTakesAllItsPortsAlong) {
    DestinationIdentifiers identifiers;
    const auto first = identifiers.identifierOf(synth);
    const auto second = identifiers.identifierOf({{129, 255}, "Synth", "out"});
    const auto other = identifiers.identifierOf({{130, 0}, "Synth", "in"});
    identifiers.clientHasGone(129);
    EXPECT_FALSE(identifiers.isThere(first));
    EXPECT_FALSE(identifiers.isThere(second));
    EXPECT_TRUE(identifiers.isThere(other));
    identifiers.allMayHaveGone();
    EXPECT_FALSE(identifiers.isThere(other));
}

TEST(DestinationIdentifiers, UnknownNumbers) {
    DestinationIdentifiers identifiers;
    identifiers.portHasGone(synth.address);
    identifiers.clientHasGone(129);
    const auto number = identifiers.identifierOf(synth);
    for (const auto unknown : {0U, number + 1, number + (1U << 16U), ~0U}) {
        EXPECT_FALSE(identifiers.isThere(unknown)) << unknown;
        EXPECT_EQ(identifiers.port(unknown), nullptr) << unknown;
    }
}

} // namespace
} // namespace tavro::alsa
