#include "Platform/Linux/X11/EmergencyExit.h"

#include "KeyboardDescriptions.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace tavro::x11 {
namespace {

constexpr std::size_t escape = 9;
constexpr std::size_t leftShift = 50;
constexpr std::size_t rightShift = 62;
constexpr std::size_t capsLock = 66;

KeySet keys(std::initializer_list<std::size_t> held) {
    KeySet set;
    for (const auto key : held) {
        set.set(key);
    }
    return set;
}

TEST(EmergencyExit, NeedsAllThreeKeysWhateverElseIsHeld) {
    const EmergencyExit exit;
    EXPECT_FALSE(exit.isHeld({}));
    EXPECT_FALSE(exit.isHeld(keys({leftShift, rightShift})));
    EXPECT_FALSE(exit.isHeld(keys({leftShift, escape})));
    EXPECT_FALSE(exit.isHeld(keys({rightShift, escape})));
    EXPECT_TRUE(exit.isHeld(keys({leftShift, rightShift, escape})));
    EXPECT_TRUE(exit.isHeld(keys({leftShift, rightShift, escape, 38, 39, 37})));
}

TEST(EmergencyExit, CountsKeysThatTheLayoutHasMovedAsWellAsTheirOldPlaces) {
    const EmergencyExit exit(KeyboardDescriptions::make({{capsLock, {0xFF1B}}, {escape, {0xFFE5}}}, {}));
    EXPECT_TRUE(exit.isHeld(keys({leftShift, rightShift, capsLock})));
    EXPECT_TRUE(exit.isHeld(keys({leftShift, rightShift, escape})));
    EXPECT_FALSE(exit.isHeld(keys({leftShift, capsLock, escape})));
}

TEST(EmergencyExit, DoesNotCountSymbolsOfFurtherLevels) {
    const EmergencyExit exit(KeyboardDescriptions::make({{38, {'a', 0xFF1B}}}, {}));
    EXPECT_FALSE(exit.isHeld(keys({leftShift, rightShift, 38})));
}

} // namespace
} // namespace tavro::x11
