#include "Updates/Manifest/SemanticVersion.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace tavro {
namespace {

SemanticVersion version(std::string_view text) {
    const auto parsed = SemanticVersion::parse(text);
    EXPECT_TRUE(parsed.has_value()) << text;
    return parsed.value_or(SemanticVersion());
}

TEST(SemanticVersionTest, readsTheThreeNumbers) {
    EXPECT_EQ(version("1.22.333"), (SemanticVersion{1, 22, 333, std::nullopt}));
    EXPECT_EQ(version("0.0.0"), SemanticVersion());
}

TEST(SemanticVersionTest, skipsWhiteSpaceAroundTheText) {
    const SemanticVersion expected{1, 2, 3, std::nullopt};
    EXPECT_EQ(version(" 1.2.3\n"), expected);
    EXPECT_EQ(version("\t\r\n\v\f 1.2.3 \t\r\n\v\f"), expected);
    EXPECT_EQ(version("\xC2\xA0\xE2\x80\xA8v1.2.3\xE3\x80\x80\xC2\x85"), expected);
}

TEST(SemanticVersionTest, skipsOneSmallVAndNothingElse) {
    EXPECT_EQ(version("v1.2.3"), (SemanticVersion{1, 2, 3, std::nullopt}));
    for (const auto* text : {"V1.2.3", "vv1.2.3", "v 1.2.3", "1.v2.3", "version1.2.3"}) {
        EXPECT_FALSE(SemanticVersion::parse(text)) << text;
    }
}

TEST(SemanticVersionTest, refusesEverythingButThreeNumbers) {
    for (const auto* text :
         {"",       " ",      "v",      "1",      "1.2",     "1.2.3.4", "1..3",  "1.2.",         ".2.3",
          "..",     "1.2.x",  "1.2.3x", "1 .2.3", "0x1.2.3", "1.2.3 4", "1,2,3", "1.2.\xD9\xA3", "+1.2.3",
          "-1.2.3", "1.-2.3", "1.2.1e3"}) {
        EXPECT_FALSE(SemanticVersion::parse(text)) << text;
    }
    EXPECT_FALSE(SemanticVersion::parse(std::string_view("1.2.3\0", 6)));
}

TEST(SemanticVersionTest, readsNumbersAsFarAsSixtyFourBitsGo) {
    EXPECT_EQ(version("9223372036854775807.0.1").major, INT64_MAX);
    EXPECT_FALSE(SemanticVersion::parse("9223372036854775808.0.0"));
    EXPECT_FALSE(SemanticVersion::parse("0.0.99999999999999999999999999"));
    EXPECT_EQ(version("01.002.00000000000000000000000003"), (SemanticVersion{1, 2, 3, std::nullopt}));
}

TEST(SemanticVersionTest, dropsBuildMetadata) {
    EXPECT_EQ(version("1.2.3+build.7"), (SemanticVersion{1, 2, 3, std::nullopt}));
    EXPECT_EQ(version("1.2.3-beta+exp"), (SemanticVersion{1, 2, 3, "beta"}));
    EXPECT_EQ(version("1.2.3+exp-beta+more"), (SemanticVersion{1, 2, 3, std::nullopt}));
    EXPECT_EQ(version("1.2.3+"), (SemanticVersion{1, 2, 3, std::nullopt}));
    EXPECT_FALSE(SemanticVersion::parse("1.2+3.4"));
}

TEST(SemanticVersionTest, keepsThePrereleaseAsItIs) {
    EXPECT_EQ(version("1.2.3-alpha-2").prerelease, "alpha-2");
    EXPECT_EQ(version("1.2.3--").prerelease, "-");
    EXPECT_EQ(version("1.2.3-..").prerelease, "..");
    EXPECT_EQ(version("1.0.0-/../../x").prerelease, "/../../x");
    EXPECT_EQ(version("1.2.3-a b\xC3\xA9").prerelease, "a b\xC3\xA9");
    EXPECT_FALSE(SemanticVersion::parse("1.2.3-"));
    EXPECT_FALSE(SemanticVersion::parse("1.2.3-+build"));
    EXPECT_FALSE(SemanticVersion::parse("1.2.3- "));
}

TEST(SemanticVersionTest, describesWhatItKept) {
    EXPECT_EQ(version("v01.2.3+x").description(), "1.2.3");
    EXPECT_EQ(version(" v1.2.3-rc.01+x\n").description(), "1.2.3-rc.01");
}

TEST(SemanticVersionTest, ordersThePrereleasesOfOneRelease) {
    const std::array<SemanticVersion, 8> ascending{
        version("1.0.0-alpha"),  version("1.0.0-alpha.1"), version("1.0.0-alpha.beta"), version("1.0.0-beta"),
        version("1.0.0-beta.2"), version("1.0.0-beta.11"), version("1.0.0-rc.1"),       version("1.0.0"),
    };
    for (std::size_t a = 0; a < ascending.size(); ++a) {
        for (std::size_t b = 0; b < ascending.size(); ++b) {
            const auto both = ascending.at(a).description() + " and " + ascending.at(b).description();
            EXPECT_EQ(ascending.at(a) < ascending.at(b), a < b) << both;
            EXPECT_EQ(ascending.at(a) <= ascending.at(b), a <= b) << both;
            EXPECT_EQ(ascending.at(a) > ascending.at(b), a > b) << both;
            EXPECT_EQ(ascending.at(a) >= ascending.at(b), a >= b) << both;
            EXPECT_EQ(ascending.at(a) == ascending.at(b), a == b) << both;
        }
    }
}

TEST(SemanticVersionTest, ordersByTheFirstNumberThatDiffers) {
    EXPECT_LT(version("1.9.9"), version("2.0.0-alpha"));
    EXPECT_LT(version("1.2.9"), version("1.10.0"));
    EXPECT_LT(version("1.2.9"), version("1.2.10"));
    EXPECT_FALSE(version("1.2.3") < version("1.2.3"));
    EXPECT_LT(version("1.2.3-rc.1"), version("1.2.3"));
    EXPECT_FALSE(version("1.2.3") < version("1.2.3-rc.1"));
}

TEST(SemanticVersionTest, differsWithoutAnOrderWhereOnlyTheSpellingDiffers) {
    const auto a = version("1.0.0-01");
    const auto b = version("1.0.0-1");
    EXPECT_NE(a, b);
    EXPECT_FALSE(a < b);
    EXPECT_FALSE(b < a);
    EXPECT_TRUE(a <= b);
    EXPECT_TRUE(a >= b);
}

TEST(SemanticVersionTest, comparesIdentifiers) {
    const auto compare = &SemanticVersion::comparePrerelease;
    EXPECT_EQ(compare("", ""), 0);
    EXPECT_EQ(compare("", "."), -1);
    EXPECT_EQ(compare("a.", "a"), 1);
    EXPECT_EQ(compare("a..b", "a.0.b"), 1) << "an empty identifier is no number";
    EXPECT_EQ(compare("9", "10"), -1);
    EXPECT_EQ(compare("10", "a"), -1);
    EXPECT_EQ(compare("a", "10"), 1);
    EXPECT_EQ(compare("-1", "0"), -1) << "a number may have a sign";
    EXPECT_EQ(compare("+1", "1"), 0);
    EXPECT_EQ(compare("+-1", "0"), 1) << "two signs make no number";
    EXPECT_EQ(compare("9223372036854775808", "9223372036854775807"), 1) << "too large for a number";
    EXPECT_EQ(compare("Beta", "alpha"), -1) << "byte by byte";
    EXPECT_EQ(compare("alpha", "alphabet"), -1);
    EXPECT_EQ(compare("z", "\xC3\xA9"), -1);
    EXPECT_EQ(compare("1.2.3", "1.2.3"), 0);
}

} // namespace
} // namespace tavro
