#include "KeyboardMapping/KeyboardLayout.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tavro {
namespace {

struct RowCase {
    KeyboardLayoutKind kind;
    std::size_t rowIndex;
    std::u32string keys;
    std::int64_t octaveOffset;
    std::string label;
};

class LayoutRow : public testing::TestWithParam<RowCase> {};

TEST_P(LayoutRow, HasItsKeysOctaveAndLabel) {
    const auto& [kind, rowIndex, keys, octaveOffset, label] = GetParam();
    const auto& layout = KeyboardLayout::of(kind);
    ASSERT_EQ(layout.rows().size(), 4U);
    EXPECT_EQ(layout.rows()[rowIndex], (KeyboardRow{keys, octaveOffset, label}));
}

TEST_P(LayoutRow, PlacesEachOfItsKeys) {
    const auto& [kind, rowIndex, keys, octaveOffset, label] = GetParam();
    const auto& layout = KeyboardLayout::of(kind);
    std::int64_t index = 0;
    for (const auto key : keys) {
        const auto* position = layout.position(key);
        ASSERT_NE(position, nullptr) << toUtf8(key);
        EXPECT_EQ(*position, (KeyPosition{key, static_cast<std::int64_t>(rowIndex), index, octaveOffset}));
        EXPECT_EQ(layout.positions().at(key), *position);
        ++index;
    }
}

TEST_P(LayoutRow, IsChordZoneBelowAndMelodyZoneAboveInSplitMode) {
    const auto& [kind, rowIndex, keys, octaveOffset, label] = GetParam();
    const auto& layout = KeyboardLayout::of(kind);
    for (const auto key : keys) {
        EXPECT_EQ(layout.isMelodyKey(key, true), rowIndex >= 2);
        EXPECT_EQ(layout.zone(key, true),
                  rowIndex >= 2 ? KeyPerformanceZone::melody : KeyPerformanceZone::chord);
        EXPECT_FALSE(layout.isMelodyKey(key, false));
        EXPECT_EQ(layout.zone(key, false), KeyPerformanceZone::chord);
    }
}

constexpr auto qwerty = KeyboardLayoutKind::qwerty;
constexpr auto qwertz = KeyboardLayoutKind::qwertz;

INSTANTIATE_TEST_SUITE_P(BothLayouts, LayoutRow,
                         testing::Values(RowCase{qwerty, 0, U"zxcvbnm,./", -1, "Z"},
                                         RowCase{qwerty, 1, U"asdfghjkl;'", 0, "A"},
                                         RowCase{qwerty, 2, U"qwertyuiop[]", 1, "Q"},
                                         RowCase{qwerty, 3, U"1234567890-=", 2, "1"},
                                         RowCase{qwertz, 0, U"yxcvbnm,.-", -1, "Y"},
                                         RowCase{qwertz, 1, U"asdfghjkl\u00F6\u00E4", 0, "A"},
                                         RowCase{qwertz, 2, U"qwertzuiop\u00FC+", 1, "Q"},
                                         RowCase{qwertz, 3, U"1234567890\u00DF\u00B4", 2, "1"}));

TEST(KeyboardLayout, HasFortyFiveKeysInRowsOfTenElevenAndTwoTimesTwelve) {
    for (const auto kind : allKeyboardLayoutKinds) {
        const auto& layout = KeyboardLayout::of(kind);
        EXPECT_EQ(layout.positions().size(), 45U);
        ASSERT_EQ(layout.rows().size(), 4U);
        EXPECT_EQ(layout.rows()[0].keys.size(), 10U);
        EXPECT_EQ(layout.rows()[1].keys.size(), 11U);
        EXPECT_EQ(layout.rows()[2].keys.size(), 12U);
        EXPECT_EQ(layout.rows()[3].keys.size(), 12U);
    }
}

TEST(KeyboardLayout, OfAKindIsTheOneBuiltOnce) {
    EXPECT_EQ(&KeyboardLayout::of(qwerty), &KeyboardLayout::scaleRowsQWERTY());
    EXPECT_EQ(&KeyboardLayout::of(qwertz), &KeyboardLayout::scaleRowsQWERTZ());
    EXPECT_EQ(&KeyboardLayout::scaleRowsQWERTY(), &KeyboardLayout::scaleRowsQWERTY());
}

TEST(KeyboardLayout, FindsUpperCaseLikeLowerCase) {
    for (const auto kind : allKeyboardLayoutKinds) {
        const auto* position = KeyboardLayout::of(kind).position(U'Q');
        ASSERT_NE(position, nullptr);
        EXPECT_EQ(*position, (KeyPosition{U'q', 2, 0, 1}));
        EXPECT_EQ(position, KeyboardLayout::of(kind).position(U'q'));
    }
    const auto& german = KeyboardLayout::scaleRowsQWERTZ();
    ASSERT_NE(german.position(U'\u00D6'), nullptr);
    EXPECT_EQ(*german.position(U'\u00D6'), (KeyPosition{U'\u00F6', 1, 9, 0}));
    EXPECT_TRUE(german.isMelodyKey(U'\u00DC', true));
}

TEST(KeyboardLayout, KnowsTheKeysOfItsOwnLanguageOnly) {
    const auto& german = KeyboardLayout::scaleRowsQWERTZ();
    const auto& american = KeyboardLayout::scaleRowsQWERTY();
    EXPECT_EQ(american.position(U'\u00F6'), nullptr);
    EXPECT_EQ(german.position(U';'), nullptr);
    EXPECT_EQ(*american.position(U';'), (KeyPosition{U';', 1, 9, 0}));
    EXPECT_EQ(*american.position(U'y'), (KeyPosition{U'y', 2, 5, 1}));
    EXPECT_EQ(*german.position(U'y'), (KeyPosition{U'y', 0, 0, -1}));
}

TEST(KeyboardLayout, KeysOutsideHaveNoPositionAndAreChordZone) {
    for (const auto kind : allKeyboardLayoutKinds) {
        for (const Character outside : {U'\t', U'\r', U' ', U'^', U'<', U'`', U'!', U'\u00E9', noKey}) {
            EXPECT_EQ(KeyboardLayout::of(kind).position(outside), nullptr);
            EXPECT_FALSE(KeyboardLayout::of(kind).isMelodyKey(outside, true));
            EXPECT_EQ(KeyboardLayout::of(kind).zone(outside, true), KeyPerformanceZone::chord);
        }
    }
}

TEST(KeyboardLayout, BuildsLowerCasePositionsAndTheLaterOfTwoPlacesWins) {
    const KeyboardLayout layout({{U"AbA", -2, "A"}, {U"xB", 3, "X"}});
    EXPECT_EQ(layout.positions().size(), 3U);
    EXPECT_EQ(*layout.position(U'a'), (KeyPosition{U'a', 0, 2, -2}));
    EXPECT_EQ(*layout.position(U'b'), (KeyPosition{U'b', 1, 1, 3}));
    EXPECT_EQ(*layout.position(U'x'), (KeyPosition{U'x', 1, 0, 3}));
    EXPECT_EQ(layout.rows()[0].keys, U"AbA");
}

TEST(KeyboardLayout, WithoutRowsHasNoPositions) {
    EXPECT_TRUE(KeyboardLayout({}).positions().empty());
    EXPECT_EQ(KeyboardLayout({}).position(U'a'), nullptr);
}

TEST(KeyboardLayout, ComparesByValue) {
    EXPECT_EQ(KeyboardLayout({{U"ab", 0, "A"}}), KeyboardLayout({{U"ab", 0, "A"}}));
    EXPECT_NE(KeyboardLayout({{U"ab", 0, "A"}}), KeyboardLayout({{U"ab", 1, "A"}}));
    EXPECT_NE(KeyboardLayout({{U"ab", 0, "A"}}), KeyboardLayout({{U"ab", 0, "B"}}));
    EXPECT_NE(KeyboardLayout::scaleRowsQWERTY(), KeyboardLayout::scaleRowsQWERTZ());
}

} // namespace
} // namespace tavro
