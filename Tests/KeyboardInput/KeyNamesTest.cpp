#include "KeyboardInput/KeyNames.h"

#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string>
#include <utility>

namespace tavro {
namespace {

constexpr auto qwertz = KeyboardLayoutKind::qwertz;
constexpr auto qwerty = KeyboardLayoutKind::qwerty;

TEST(KeyNames, KeysThatPrintNothingAreCalledByWords) {
    const std::array<std::pair<std::int64_t, const char*>, 12> named{{{49, "Space"},
                                                                      {36, "Return"},
                                                                      {48, "Tab"},
                                                                      {51, "Backspace"},
                                                                      {53, "Escape"},
                                                                      {96, "F5"},
                                                                      {111, "F12"},
                                                                      {90, "F20"},
                                                                      {87, "Keypad 5"},
                                                                      {76, "Keypad Enter"},
                                                                      {123, "Left"},
                                                                      {117, "Delete"}}};
    for (const auto& [keyCode, name] : named) {
        EXPECT_EQ(KeyNames::name(keyCode, qwertz), name);
        EXPECT_EQ(KeyNames::name(keyCode, qwerty), name);
    }
}

TEST(KeyNames, OthersAreCalledByWhatTheLayoutPrints) {
    EXPECT_EQ(KeyNames::name(50, qwertz), "^");
    EXPECT_EQ(KeyNames::name(50, qwerty), "`");
    EXPECT_EQ(KeyNames::name(16, qwertz), "z");
    EXPECT_EQ(KeyNames::name(16, qwerty), "y");
    EXPECT_EQ(KeyNames::name(23, qwertz), "5");
    EXPECT_EQ(KeyNames::nameLeftOfOne(qwertz), "^");
    EXPECT_EQ(KeyNames::nameLeftOfOne(qwerty), "`");
}

TEST(KeyNames, NoTwoKeysHaveTheSameName) {
    for (const auto layout : {qwertz, qwerty}) {
        std::set<std::string> names;
        for (std::int64_t keyCode = 0; keyCode < 200; ++keyCode) {
            if (const auto name = KeyNames::name(keyCode, layout)) {
                EXPECT_TRUE(names.insert(*name).second) << *name;
            }
        }
        EXPECT_GT(names.size(), 100U);
    }
}

TEST(KeyNames, UnknownKeysHaveNone) {
    EXPECT_EQ(KeyNames::name(0x1234, qwertz), std::nullopt);
    EXPECT_EQ(KeyNames::name(-1, qwerty), std::nullopt);
}

} // namespace
} // namespace tavro
