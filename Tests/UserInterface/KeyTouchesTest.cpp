#include "UserInterface/KeyTouches.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class KeyTouchesTest : public testing::Test {
protected:
    std::vector<std::string> takePlayed() { return std::exchange(played_, {}); }

    std::vector<std::string> played_;
    KeyTouches touches_{
        [this](Character key) { played_.push_back(std::string("down ") + static_cast<char>(key)); },
        [this](Character key) { played_.push_back(std::string("up ") + static_cast<char>(key)); }};
};

TEST_F(KeyTouchesTest, APointPlaysItsKeyUntilItGoes) {
    touches_.moveTo(1, U'a');
    EXPECT_THAT(takePlayed(), ElementsAre("down a"));
    touches_.moveTo(1, U'a');
    EXPECT_THAT(takePlayed(), IsEmpty());
    touches_.end(1);
    EXPECT_THAT(takePlayed(), ElementsAre("up a"));
}

TEST_F(KeyTouchesTest, SlidingOnReleasesTheKeyBefore) {
    touches_.moveTo(1, U'a');
    touches_.moveTo(1, U's');
    touches_.moveTo(1, U'd');
    touches_.end(1);
    EXPECT_THAT(takePlayed(), ElementsAre("down a", "up a", "down s", "up s", "down d", "up d"));
}

TEST_F(KeyTouchesTest, BesideTheKeysAPointKeepsWhatItHolds) {
    touches_.moveTo(1, U'\0');
    EXPECT_THAT(takePlayed(), IsEmpty());
    touches_.moveTo(1, U'a');
    touches_.moveTo(1, U'\0');
    touches_.moveTo(1, U'a');
    EXPECT_THAT(takePlayed(), ElementsAre("down a"));
}

TEST_F(KeyTouchesTest, TwoPointsOnOneKeySoundOnce) {
    touches_.moveTo(1, U'a');
    touches_.moveTo(2, U'a');
    touches_.end(1);
    EXPECT_THAT(takePlayed(), ElementsAre("down a"));
    touches_.moveTo(2, U's');
    EXPECT_THAT(takePlayed(), ElementsAre("up a", "down s"));
}

TEST_F(KeyTouchesTest, SeveralPointsPlayTogether) {
    touches_.moveTo(1, U'a');
    touches_.moveTo(2, U'd');
    touches_.moveTo(3, U'g');
    touches_.end(2);
    EXPECT_THAT(takePlayed(), ElementsAre("down a", "down d", "down g", "up d"));
}

TEST_F(KeyTouchesTest, TheEndOfAnUnknownPointIsNothing) {
    touches_.end(7);
    EXPECT_THAT(takePlayed(), IsEmpty());
}

RC_GTEST_PROP(KeyTouches, EveryKeySoundsExactlyWhileAPointIsOnIt, ()) {
    std::map<Character, int> sounding;
    KeyTouches touches([&](Character key) { RC_ASSERT(++sounding[key] == 1); },
                       [&](Character key) { RC_ASSERT(--sounding[key] == 0); });
    std::map<int, Character> held;
    const auto steps = *rc::gen::container<std::vector<std::pair<int, char>>>(
        rc::gen::pair(rc::gen::inRange(0, 4), rc::gen::element('a', 'b', 'c', ' ', '.')));
    for (const auto& [point, where] : steps) {
        if (where == '.') {
            touches.end(point);
            held.erase(point);
        } else {
            const auto key = where == ' ' ? U'\0' : static_cast<Character>(where);
            touches.moveTo(point, key);
            if (key != U'\0') {
                held[point] = key;
            }
        }
        for (const auto key : {U'a', U'b', U'c'}) {
            const bool isHeld =
                std::ranges::any_of(held, [key](const auto& each) { return each.second == key; });
            RC_ASSERT((sounding[key] == 1) == isHeld);
        }
    }
}

} // namespace
} // namespace tavro
