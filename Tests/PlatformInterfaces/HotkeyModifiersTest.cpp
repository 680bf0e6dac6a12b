#include "PlatformInterfaces/HotkeyModifiers.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace tavro {
namespace {

constexpr auto command = HotkeyModifiers::command;
constexpr auto control = HotkeyModifiers::control;
constexpr auto option = HotkeyModifiers::option;
constexpr auto shift = HotkeyModifiers::shift;

TEST(HotkeyModifiers, HaveTheirBits) {
    EXPECT_EQ(HotkeyModifiers().rawValue(), 0);
    EXPECT_EQ(command.rawValue(), 1);
    EXPECT_EQ(control.rawValue(), 2);
    EXPECT_EQ(option.rawValue(), 4);
    EXPECT_EQ(shift.rawValue(), 8);
    EXPECT_EQ((command | control | option | shift).rawValue(), 15);
}

TEST(HotkeyModifiers, AreASet) {
    auto modifiers = control | shift;
    EXPECT_TRUE(modifiers.contains(control));
    EXPECT_TRUE(modifiers.contains(shift));
    EXPECT_TRUE(modifiers.contains(HotkeyModifiers()));
    EXPECT_FALSE(modifiers.contains(option));
    EXPECT_FALSE(modifiers.contains(option | shift));
    modifiers |= option;
    EXPECT_TRUE(modifiers.contains(option | shift));
    EXPECT_EQ(control | shift, HotkeyModifiers(10));
    EXPECT_NE(control | shift, control);
}

TEST(HotkeyModifiers, MakeAShortcutUnlessItIsShiftAlone) {
    EXPECT_FALSE(HotkeyModifiers().makesShortcut());
    EXPECT_FALSE(shift.makesShortcut());
    for (const auto modifier : {command, control, option}) {
        EXPECT_TRUE(modifier.makesShortcut());
        EXPECT_TRUE((modifier | shift).makesShortcut());
    }
}

struct PrefixCase {
    std::int64_t rawValue;
    std::string symbols;
    std::string words;
};

class DisplayPrefix : public testing::TestWithParam<PrefixCase> {};

TEST_P(DisplayPrefix, ReadsControlOptionShiftCommand) {
    const HotkeyModifiers modifiers(GetParam().rawValue);
    EXPECT_EQ(modifiers.displayPrefix(), GetParam().symbols);
    EXPECT_EQ(modifiers.displayPrefix(ModifierNaming::symbols), GetParam().symbols);
    EXPECT_EQ(modifiers.displayPrefix(ModifierNaming::words), GetParam().words);
}

INSTANTIATE_TEST_SUITE_P(
    AllSets, DisplayPrefix,
    testing::Values(PrefixCase{0, "", ""}, PrefixCase{1, "⌘", "Super+"}, PrefixCase{2, "⌃", "Ctrl+"},
                    PrefixCase{3, "⌃⌘", "Ctrl+Super+"}, PrefixCase{4, "⌥", "Alt+"},
                    PrefixCase{5, "⌥⌘", "Alt+Super+"}, PrefixCase{6, "⌃⌥", "Ctrl+Alt+"},
                    PrefixCase{7, "⌃⌥⌘", "Ctrl+Alt+Super+"}, PrefixCase{8, "⇧", "Shift+"},
                    PrefixCase{9, "⇧⌘", "Shift+Super+"}, PrefixCase{10, "⌃⇧", "Ctrl+Shift+"},
                    PrefixCase{11, "⌃⇧⌘", "Ctrl+Shift+Super+"}, PrefixCase{12, "⌥⇧", "Alt+Shift+"},
                    PrefixCase{13, "⌥⇧⌘", "Alt+Shift+Super+"}, PrefixCase{14, "⌃⌥⇧", "Ctrl+Alt+Shift+"},
                    PrefixCase{15, "⌃⌥⇧⌘", "Ctrl+Alt+Shift+Super+"}));

} // namespace
} // namespace tavro
