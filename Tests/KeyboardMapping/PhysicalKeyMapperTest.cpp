#include "KeyboardMapping/PhysicalKeyMapper.h"

#include "KeyboardMapping/KeyboardLayout.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <map>
#include <set>
#include <vector>

namespace tavro {
namespace {

struct KeyCase {
    std::int64_t keyCode;
    Character qwerty;
    Character qwertz;
};

const std::vector<KeyCase> keyCases{
    {18, U'1', U'1'}, {19, U'2', U'2'},      {20, U'3', U'3'},       {21, U'4', U'4'},
    {23, U'5', U'5'}, {22, U'6', U'6'},      {26, U'7', U'7'},       {28, U'8', U'8'},
    {25, U'9', U'9'}, {29, U'0', U'0'},      {27, U'-', U'\u00DF'},  {24, U'=', U'\u00B4'},
    {12, U'q', U'q'}, {13, U'w', U'w'},      {14, U'e', U'e'},       {15, U'r', U'r'},
    {17, U't', U't'}, {16, U'y', U'z'},      {32, U'u', U'u'},       {34, U'i', U'i'},
    {31, U'o', U'o'}, {35, U'p', U'p'},      {33, U'[', U'\u00FC'},  {30, U']', U'+'},
    {0, U'a', U'a'},  {1, U's', U's'},       {2, U'd', U'd'},        {3, U'f', U'f'},
    {5, U'g', U'g'},  {4, U'h', U'h'},       {38, U'j', U'j'},       {40, U'k', U'k'},
    {37, U'l', U'l'}, {41, U';', U'\u00F6'}, {39, U'\'', U'\u00E4'}, {6, U'z', U'y'},
    {7, U'x', U'x'},  {8, U'c', U'c'},       {9, U'v', U'v'},        {11, U'b', U'b'},
    {45, U'n', U'n'}, {46, U'm', U'm'},      {43, U',', U','},       {47, U'.', U'.'},
    {44, U'/', U'-'},
};

class PhysicalKey : public testing::TestWithParam<KeyCase> {};

TEST_P(PhysicalKey, HasItsCharacterOnBothLayouts) {
    const auto& [keyCode, qwerty, qwertz] = GetParam();
    EXPECT_EQ(PhysicalKeyMapper::character(keyCode, KeyboardLayoutKind::qwerty), qwerty);
    EXPECT_EQ(PhysicalKeyMapper::character(keyCode, KeyboardLayoutKind::qwertz), qwertz);
}

INSTANTIATE_TEST_SUITE_P(EachCode, PhysicalKey, testing::ValuesIn(keyCases),
                         [](const auto& test) { return "Code" + std::to_string(test.param.keyCode); });

TEST(PhysicalKeyMapper, GivesEveryKeyOfALayoutOnceAndNothingElse) {
    for (const auto kind : allKeyboardLayoutKinds) {
        std::multiset<Character> mapped;
        for (std::int64_t keyCode = -1000; keyCode <= 1000; ++keyCode) {
            if (const auto character = PhysicalKeyMapper::character(keyCode, kind)) {
                mapped.insert(*character);
            }
        }
        std::multiset<Character> ofLayout;
        for (const auto& row : KeyboardLayout::of(kind).rows()) {
            ofLayout.insert(row.keys.begin(), row.keys.end());
        }
        EXPECT_EQ(mapped.size(), 45U);
        EXPECT_EQ(mapped, ofLayout);
    }
}

class UnplayableKey : public testing::TestWithParam<std::int64_t> {};

TEST_P(UnplayableKey, HasNoCharacter) {
    EXPECT_EQ(PhysicalKeyMapper::character(GetParam(), KeyboardLayoutKind::qwerty), std::nullopt);
    EXPECT_EQ(PhysicalKeyMapper::character(GetParam(), KeyboardLayoutKind::qwertz), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Codes, UnplayableKey,
                         testing::Values(50, 10, 48, 36, 49, 53, 42, -1, 65536, std::int64_t{1} << 32,
                                         std::numeric_limits<std::int64_t>::max(),
                                         std::numeric_limits<std::int64_t>::min()));

} // namespace
} // namespace tavro
