#include "PerformanceModel/Character.h"

#include <gtest/gtest.h>

#include <string>

namespace tavro {
namespace {

struct Casing {
    Character character;
    Character lower;
};

class LowerCase : public testing::TestWithParam<Casing> {};

TEST_P(LowerCase, OfOneCharacterIsOneCharacter) {
    EXPECT_EQ(lowercased(GetParam().character), GetParam().lower);
    EXPECT_EQ(lowercased(GetParam().lower), GetParam().lower);
}

INSTANTIATE_TEST_SUITE_P(Keys, LowerCase,
                         testing::Values(Casing{U'A', U'a'}, Casing{U'Z', U'z'}, Casing{U'a', U'a'},
                                         Casing{U'1', U'1'}, Casing{U'@', U'@'}, Casing{U'[', U'['},
                                         Casing{U'`', U'`'}, Casing{U'\u00D6', U'\u00F6'},
                                         Casing{U'\u00C4', U'\u00E4'}, Casing{U'\u00DC', U'\u00FC'},
                                         Casing{U'\u00DF', U'\u00DF'}, Casing{U'\u1E9E', U'\u00DF'},
                                         Casing{U'\u00B4', U'\u00B4'}, Casing{U'\u03A9', U'\u03C9'},
                                         Casing{noKey, noKey}));

struct Encoding {
    Character character;
    std::string utf8;
};

class Utf8 : public testing::TestWithParam<Encoding> {};

TEST_P(Utf8, IsWrittenAndReadBack) {
    EXPECT_EQ(toUtf8(GetParam().character), GetParam().utf8);
    EXPECT_EQ(charactersOf(GetParam().utf8), std::u32string(1, GetParam().character));
}

INSTANTIATE_TEST_SUITE_P(EachLength, Utf8,
                         testing::Values(Encoding{U'a', "a"}, Encoding{U'\u00DF', "\xC3\x9F"},
                                         Encoding{U'\u2318', "\xE2\x8C\x98"},
                                         Encoding{U'\U0001F3B9', "\xF0\x9F\x8E\xB9"},
                                         Encoding{noKey, std::string(1, '\0')}));

TEST(Character, WithoutAScalarHasNoText) {
    EXPECT_EQ(toUtf8(Character{0xD800}), "");
    EXPECT_EQ(toUtf8(Character{0x110000}), "");
    EXPECT_EQ(toUtf8(Character{0xFFFFFFFF}), "");
}

TEST(Character, TextsAreSplitIntoCharactersNotBytes) {
    EXPECT_EQ(charactersOf("a\xC3\xB6\xC2\xB4,"), U"a\u00F6\u00B4,");
    EXPECT_EQ(charactersOf(""), U"");
}

TEST(Character, ALetterWithACombiningMarkIsOneCharacter) {
    EXPECT_EQ(charactersOf("o\xCC\x88"), U"\u00F6");
}

TEST(Character, BrokenTextHasNoCharacters) {
    EXPECT_EQ(charactersOf("a\xC3"), std::nullopt);
    EXPECT_EQ(charactersOf("\xFF"), std::nullopt);
    EXPECT_EQ(charactersOf("\xED\xA0\x80"), std::nullopt);
}

} // namespace
} // namespace tavro
