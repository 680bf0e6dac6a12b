#include "Platform/Linux/Evdev/KeyboardShape.h"

#include <gtest/gtest.h>

namespace tavro::evdev {
namespace {

KeySet lettersSpaceAndReturn() {
    KeySet keys;
    for (const auto key : {KEY_Q, KEY_W, KEY_E, KEY_R, KEY_T, KEY_Y, KEY_U,     KEY_I,    KEY_O, KEY_P,
                           KEY_A, KEY_S, KEY_D, KEY_F, KEY_G, KEY_H, KEY_J,     KEY_K,    KEY_L, KEY_Z,
                           KEY_X, KEY_C, KEY_V, KEY_B, KEY_N, KEY_M, KEY_SPACE, KEY_ENTER}) {
        keys.set(static_cast<std::size_t>(key));
    }
    return keys;
}

TEST(KeyboardShape, LettersSpaceAndReturnMakeAKeyboard) {
    EXPECT_TRUE(KeyboardShape::isKeyboard(lettersSpaceAndReturn()));
}

TEST(KeyboardShape, EveryOneOfThemIsNeeded) {
    const auto keys = lettersSpaceAndReturn();
    ASSERT_EQ(keys.count(), 28U);
    for (std::size_t key = 0; key < keys.size(); ++key) {
        if (keys.test(key)) {
            EXPECT_FALSE(KeyboardShape::isKeyboard(KeySet(keys).reset(key))) << key;
        }
    }
}

TEST(KeyboardShape, OtherKeysDoNotMatter) {
    EXPECT_TRUE(KeyboardShape::isKeyboard(lettersSpaceAndReturn().set(BTN_LEFT).set(KEY_POWER)));
    EXPECT_FALSE(KeyboardShape::isKeyboard(KeySet().set(KEY_POWER)));
    EXPECT_FALSE(KeyboardShape::isKeyboard({}));
}

TEST(KeyboardShape, LastWordHoldsTheFirstKeys) {
    EXPECT_EQ(KeyboardShape::parse("2\n"), KeySet().set(KEY_ESC));
    EXPECT_EQ(KeyboardShape::parse("40000000"), KeySet().set(KEY_A));
    EXPECT_EQ(KeyboardShape::parse("0"), KeySet());
}

TEST(KeyboardShape, EachWordToTheLeftHoldsTheNextKeys) {
    const auto bits = KeyboardShape::wordBits;
    EXPECT_EQ(KeyboardShape::parse("1 0 4\n"), KeySet().set(2 * bits).set(2));
    EXPECT_EQ(KeyboardShape::parse("1 2 0 0"), KeySet().set(3 * bits).set(2 * bits + 1));
}

TEST(KeyboardShape, KeysBeyondTheLastOneAreIgnored) {
    std::string text = "ff";
    for (std::size_t first = 0; first < KEY_CNT; first += KeyboardShape::wordBits) {
        text += " 0";
    }
    EXPECT_EQ(KeyboardShape::parse(text), KeySet());
}

TEST(KeyboardShape, WhatIsNoListIsNothing) {
    for (const auto* const text : {"", "\n", "x", "1 g", "1  2", " 1", "0x1", "-1", "11111111111111111"}) {
        EXPECT_EQ(KeyboardShape::parse(text), std::nullopt) << '"' << text << '"';
    }
}

} // namespace
} // namespace tavro::evdev
