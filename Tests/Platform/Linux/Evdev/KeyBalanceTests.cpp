#include "Platform/Linux/Evdev/GrabSpan.h"
#include "Platform/Linux/Evdev/KeyBalance.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace tavro::evdev {
namespace {

using Type = KeyboardTap::Event::Type;
using Verdict = KeyboardTap::Verdict;

class KeyBalanceTest : public testing::Test {
protected:
    static constexpr std::uint32_t key = KEY_A;

    bool press(bool isGrabbed, std::uint32_t code = key) { return take(code, 1, isGrabbed); }

    bool repeat(bool isGrabbed, std::uint32_t code = key) { return take(code, 2, isGrabbed); }

    bool release(bool isGrabbed, std::uint32_t code = key) { return take(code, 0, isGrabbed); }

    std::vector<std::string> takeTold() { return std::exchange(told_, {}); }

    KeyBalance balance{KeySet()};
    /// What the client answers; nothing is when it is not asked.
    std::optional<Verdict> answer = Verdict::pass;

private:
    bool take(std::uint32_t code, std::int32_t value, bool isGrabbed) {
        return balance.take(code, value, isGrabbed,
                            [this](const KeyBalance::Change& change) -> std::optional<Verdict> {
                                if (answer) {
                                    told_.push_back(describe(change));
                                }
                                return answer;
                            });
    }

    static std::string describe(const KeyBalance::Change& change) {
        const std::string kind = change.type == Type::keyUp ? "up" : change.isAutorepeat ? "repeat" : "down";
        return kind + ' ' + std::to_string(change.evdevCode) + (change.isGrabbed ? " grabbed" : "");
    }

    std::vector<std::string> told_;
};

using Told = std::vector<std::string>;

TEST_F(KeyBalanceTest, WhatTheClientPassesGoesOnToTheCopy) {
    EXPECT_TRUE(press(true));
    EXPECT_TRUE(balance.passedOn().test(key));
    EXPECT_TRUE(release(true));
    EXPECT_TRUE(balance.passedOn().none());
    EXPECT_EQ(takeTold(), (Told{"down 30 grabbed", "up 30 grabbed"}));
}

TEST_F(KeyBalanceTest, WhatTheClientSwallowsDoesNot) {
    answer = Verdict::swallow;
    EXPECT_FALSE(press(true));
    EXPECT_TRUE(balance.held().test(key));
    EXPECT_TRUE(balance.told().test(key));
    EXPECT_TRUE(balance.passedOn().none());
    EXPECT_FALSE(release(true));
    EXPECT_EQ(takeTold(), (Told{"down 30 grabbed", "up 30 grabbed"}));
}

TEST_F(KeyBalanceTest, UngrabbedNothingGoesToTheCopy) {
    EXPECT_FALSE(press(false));
    EXPECT_FALSE(release(false));
    EXPECT_EQ(takeTold(), (Told{"down 30", "up 30"}));
}

TEST_F(KeyBalanceTest, ReleaseGoesWhereThePressWent) {
    EXPECT_TRUE(press(true));
    answer = Verdict::swallow;
    EXPECT_TRUE(release(true));
    EXPECT_FALSE(press(true));
    answer = Verdict::pass;
    EXPECT_FALSE(release(true));
    // The grab has come or gone meanwhile.
    EXPECT_TRUE(press(true));
    EXPECT_TRUE(release(false));
    EXPECT_FALSE(press(false));
    EXPECT_FALSE(release(true));
}

TEST_F(KeyBalanceTest, RepeatsAreToldAndNeverGoOn) {
    static_cast<void>(press(true));
    EXPECT_FALSE(repeat(true));
    EXPECT_FALSE(repeat(false));
    EXPECT_EQ(takeTold(), (Told{"down 30 grabbed", "repeat 30 grabbed", "repeat 30"}));
    EXPECT_TRUE(balance.passedOn().test(key));
}

TEST_F(KeyBalanceTest, SecondPressIsARepeat) {
    answer = Verdict::swallow;
    static_cast<void>(press(true));
    answer = Verdict::pass;
    EXPECT_FALSE(press(true));
    EXPECT_FALSE(release(true));
    EXPECT_EQ(takeTold(), (Told{"down 30 grabbed", "repeat 30 grabbed", "up 30 grabbed"}));
}

TEST_F(KeyBalanceTest, ModifiersPassWithoutBeingAskedFor) {
    answer = Verdict::swallow;
    EXPECT_TRUE(press(true, KEY_LEFTSHIFT));
    EXPECT_FALSE(repeat(true, KEY_LEFTSHIFT));
    EXPECT_TRUE(balance.held().test(KEY_LEFTSHIFT));
    EXPECT_TRUE(release(true, KEY_LEFTSHIFT));
    EXPECT_TRUE(balance.held().none());
    EXPECT_FALSE(press(false, KEY_RIGHTALT));
    EXPECT_FALSE(release(false, KEY_RIGHTALT));
    EXPECT_EQ(takeTold(), Told());
}

TEST_F(KeyBalanceTest, ReleaseOfAKeyOfWhichTheClientWasNotToldIsNotTold) {
    answer = std::nullopt;
    EXPECT_FALSE(press(false));
    answer = Verdict::pass;
    EXPECT_FALSE(repeat(false));
    EXPECT_FALSE(release(false));
    EXPECT_EQ(takeTold(), Told());
}

TEST_F(KeyBalanceTest, KeysHeldFromTheStartAreNobodysBusiness) {
    balance = KeyBalance(KeySet().set(key));
    EXPECT_TRUE(balance.held().test(key));
    EXPECT_FALSE(repeat(true));
    EXPECT_FALSE(release(true));
    EXPECT_TRUE(balance.held().none());
    EXPECT_EQ(takeTold(), Told());
}

TEST_F(KeyBalanceTest, CodeThatNoKeyHasIsIgnored) {
    EXPECT_FALSE(press(true, KEY_CNT));
    EXPECT_FALSE(release(true, KEY_CNT));
    EXPECT_EQ(takeTold(), Told());
}

TEST(GrabSpan, HoldsFromItsBeginToItsEnd) {
    GrabSpan span;
    EXPECT_FALSE(span.isOpen());
    EXPECT_FALSE(span.contains(0));
    span.begin(100);
    EXPECT_TRUE(span.isOpen());
    EXPECT_FALSE(span.contains(99));
    EXPECT_TRUE(span.contains(100));
    span.end(200);
    EXPECT_FALSE(span.isOpen());
    EXPECT_TRUE(span.contains(199));
    EXPECT_FALSE(span.contains(200));
    span.begin(300);
    EXPECT_FALSE(span.contains(150));
    EXPECT_TRUE(span.contains(1'000'000));
}

} // namespace
} // namespace tavro::evdev
