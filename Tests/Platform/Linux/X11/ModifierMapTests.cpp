#include "Platform/Linux/X11/ModifierMap.h"

#include "KeyboardDescriptions.h"

#include <gtest/gtest.h>

#include <set>

namespace tavro::x11 {
namespace {

constexpr std::uint32_t shift = 1;
constexpr std::uint32_t lock = 2;
constexpr std::uint32_t control = 4;
constexpr std::uint32_t mod1 = 8;
constexpr std::uint32_t mod2 = 16;
constexpr std::uint32_t mod3 = 32;
constexpr std::uint32_t mod4 = 64;
constexpr std::uint32_t mod5 = 128;

using Bits = std::vector<std::uint32_t>;

TEST(ModifierMap, ReadsTheUsualKeyboardAsTheOneItAssumes) {
    const ModifierMap assumed;
    const ModifierMap read(KeyboardDescriptions::usual());
    for (std::uint32_t bits = 0; bits < 256; ++bits) {
        EXPECT_EQ(read.modifiers(bits), assumed.modifiers(bits)) << bits;
    }
}

TEST(ModifierMap, NamesTheBitsOfAnEvent) {
    const ModifierMap map(KeyboardDescriptions::usual());
    EXPECT_EQ(map.modifiers(0), HotkeyModifiers());
    EXPECT_EQ(map.modifiers(shift), HotkeyModifiers::shift);
    EXPECT_EQ(map.modifiers(control), HotkeyModifiers::control);
    EXPECT_EQ(map.modifiers(mod1), HotkeyModifiers::option);
    EXPECT_EQ(map.modifiers(mod5), HotkeyModifiers::option);
    EXPECT_EQ(map.modifiers(mod4), HotkeyModifiers::command);
    EXPECT_EQ(map.modifiers(lock | mod2 | mod3), HotkeyModifiers());
    EXPECT_EQ(map.modifiers(shift | lock | control), HotkeyModifiers::shift | HotkeyModifiers::control);
}

TEST(ModifierMap, PlayingKeysHaveEightVariantsInAll) {
    const ModifierMap map(KeyboardDescriptions::usual());
    EXPECT_EQ(map.variants({}), (Bits{0, lock, mod2, lock | mod2}));
    EXPECT_EQ(map.variants(HotkeyModifiers::shift),
              (Bits{shift, shift | lock, shift | mod2, shift | lock | mod2}));
}

TEST(ModifierMap, VariantsOfAltHaveAltGrToo) {
    const ModifierMap map(KeyboardDescriptions::usual());
    EXPECT_EQ(map.variants(HotkeyModifiers::option).size(), 12U);
}

TEST(ModifierMap, EachCombinationOfBitsBelongsToExactlyOneSetOfModifiers) {
    const ModifierMap map(KeyboardDescriptions::usual());
    std::set<std::uint32_t> seen;
    for (std::int64_t set = 0; set < 16; ++set) {
        for (const auto bits : map.variants(HotkeyModifiers(set))) {
            EXPECT_EQ(map.modifiers(bits), HotkeyModifiers(set));
            EXPECT_TRUE(seen.insert(bits).second) << bits;
        }
    }
    // All there are without the sixth modifier, which means nothing here.
    EXPECT_EQ(seen.size(), 128U);
}

TEST(ModifierMap, FindsModifiersAtUnusualBits) {
    const ModifierMap map(
        KeyboardDescriptions::make({{64, {0xFFE9}}, {77, {0, 0xFF7F}}, {92, {0xFF7E}}, {133, {0xFFEB}}},
                                   {{3, {77}}, {4, {133}}, {5, {92}}, {7, {64}}}));
    EXPECT_EQ(map.modifiers(mod1), HotkeyModifiers());
    EXPECT_EQ(map.modifiers(mod2), HotkeyModifiers::command);
    EXPECT_EQ(map.modifiers(mod3), HotkeyModifiers::option);
    EXPECT_EQ(map.modifiers(mod5), HotkeyModifiers::option);
    EXPECT_EQ(map.variants({}), (Bits{0, lock, mod1, lock | mod1}));
}

TEST(ModifierMap, EveryModifierThatMeansNothingCountsAsALock) {
    // Scroll Lock on the sixth, as for keyboards on which it lights a lamp.
    auto description = KeyboardDescriptions::make(
        {{64, {0xFFE9}}, {66, {0xFFE5}}, {77, {0xFF7F}}, {78, {0xFF14}}, {92, {0xFE03}}, {133, {0xFFEB}}},
        {{1, {66}}, {3, {64}}, {4, {77}}, {5, {78}}, {6, {133}}, {7, {92}}});
    const ModifierMap map(description);
    EXPECT_EQ(map.variants({}),
              (Bits{0, lock, mod2, lock | mod2, mod3, lock | mod3, mod2 | mod3, lock | mod2 | mod3}));
    EXPECT_EQ(map.modifiers(mod3 | mod4), HotkeyModifiers::command);
    for (const auto bits : map.variants(HotkeyModifiers::control)) {
        EXPECT_EQ(map.modifiers(bits), HotkeyModifiers::control) << bits;
    }
}

TEST(ModifierMap, WhatTheKeyboardDoesNotHaveHasNoVariants) {
    const ModifierMap map(KeyboardDescriptions::make({{38, {'a'}}}, {}));
    EXPECT_EQ(map.variants({}), (Bits{0, lock}));
    EXPECT_EQ(map.variants(HotkeyModifiers::control), (Bits{control, control | lock}));
    EXPECT_TRUE(map.variants(HotkeyModifiers::command).empty());
    EXPECT_TRUE(map.variants(HotkeyModifiers::option).empty());
}

TEST(ModifierMap, KnowsTheModifierKeysAndWhatHoldingThemMeans) {
    const ModifierMap map(KeyboardDescriptions::usual());
    EXPECT_EQ(map.modifierKeys().count(), 9U);
    EXPECT_TRUE(map.modifierKeys().test(66));
    EXPECT_FALSE(map.modifierKeys().test(38));
    KeySet held;
    held.set(38).set(66).set(77);
    EXPECT_EQ(map.modifiersOfHeldKeys(held), HotkeyModifiers());
    held.set(62).set(37);
    EXPECT_EQ(map.modifiersOfHeldKeys(held), HotkeyModifiers::shift | HotkeyModifiers::control);
}

} // namespace
} // namespace tavro::x11
