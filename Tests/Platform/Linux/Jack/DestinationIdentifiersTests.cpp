#include "Platform/Linux/Jack/DestinationIdentifiers.h"

#include <gtest/gtest.h>

namespace tavro::jack {
namespace {

TEST(DestinationIdentifiers, CountUpFromOneAndStayWithTheName) {
    DestinationIdentifiers identifiers;
    EXPECT_EQ(identifiers.identifierOf("synth:in"), 1U);
    EXPECT_EQ(identifiers.identifierOf("sampler:in"), 2U);
    EXPECT_EQ(identifiers.identifierOf("synth:in"), 1U);
    EXPECT_EQ(identifiers.identifierOf("synth:in 2"), 3U);
}

TEST(DestinationIdentifiers, NameOfANumber) {
    DestinationIdentifiers identifiers;
    const auto identifier = identifiers.identifierOf("synth:in");
    ASSERT_NE(identifiers.portName(identifier), nullptr);
    EXPECT_EQ(*identifiers.portName(identifier), "synth:in");
    EXPECT_EQ(identifiers.portName(0), nullptr);
    EXPECT_EQ(identifiers.portName(2), nullptr);
}

} // namespace
} // namespace tavro::jack
