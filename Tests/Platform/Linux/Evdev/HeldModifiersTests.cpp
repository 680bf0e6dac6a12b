#include "Platform/Linux/Evdev/EmergencyExit.h"
#include "Platform/Linux/Evdev/HeldModifiers.h"

#include <gtest/gtest.h>

namespace tavro::evdev {
namespace {

TEST(HeldModifiers, LeftAndRightCountAlike) {
    EXPECT_EQ(HeldModifiers::of(KeySet().set(KEY_LEFTSHIFT)), HotkeyModifiers::shift);
    EXPECT_EQ(HeldModifiers::of(KeySet().set(KEY_RIGHTSHIFT)), HotkeyModifiers::shift);
    EXPECT_EQ(HeldModifiers::of(KeySet().set(KEY_LEFTCTRL)), HotkeyModifiers::control);
    EXPECT_EQ(HeldModifiers::of(KeySet().set(KEY_RIGHTCTRL)), HotkeyModifiers::control);
    EXPECT_EQ(HeldModifiers::of(KeySet().set(KEY_LEFTALT)), HotkeyModifiers::option);
    EXPECT_EQ(HeldModifiers::of(KeySet().set(KEY_RIGHTALT)), HotkeyModifiers::option);
    EXPECT_EQ(HeldModifiers::of(KeySet().set(KEY_LEFTMETA)), HotkeyModifiers::command);
    EXPECT_EQ(HeldModifiers::of(KeySet().set(KEY_RIGHTMETA)), HotkeyModifiers::command);
}

TEST(HeldModifiers, OtherKeysAreNone) {
    const auto keys = KeySet().set(KEY_A).set(KEY_CAPSLOCK).set(KEY_NUMLOCK).set(KEY_LEFTSHIFT);
    EXPECT_EQ(HeldModifiers::of(keys), HotkeyModifiers::shift);
    EXPECT_EQ(HeldModifiers::of({}), HotkeyModifiers());
}

TEST(HeldModifiers, SeveralAreTakenTogether) {
    const auto keys = KeySet().set(KEY_LEFTCTRL).set(KEY_RIGHTALT).set(KEY_LEFTMETA);
    EXPECT_EQ(HeldModifiers::of(keys),
              HotkeyModifiers::control | HotkeyModifiers::option | HotkeyModifiers::command);
}

TEST(HeldModifiers, EightKeysAreModifiers) {
    std::size_t count = 0;
    for (std::uint32_t key = 0; key < KEY_CNT; ++key) {
        const auto isModifier = HeldModifiers::isModifier(key);
        count += isModifier ? 1 : 0;
        EXPECT_EQ(isModifier, HeldModifiers::of(KeySet().set(key)) != HotkeyModifiers()) << key;
    }
    EXPECT_EQ(count, 8U);
}

TEST(EmergencyExit, IsBothShiftsAndEscape) {
    const auto all = KeySet().set(KEY_LEFTSHIFT).set(KEY_RIGHTSHIFT).set(KEY_ESC);
    EXPECT_TRUE(EmergencyExit::isHeld(all));
    EXPECT_TRUE(EmergencyExit::isHeld(KeySet(all).set(KEY_A).set(KEY_LEFTCTRL)));
    for (const auto key : {KEY_LEFTSHIFT, KEY_RIGHTSHIFT, KEY_ESC}) {
        EXPECT_FALSE(EmergencyExit::isHeld(KeySet(all).reset(static_cast<std::size_t>(key)))) << key;
    }
}

} // namespace
} // namespace tavro::evdev
