#include "Platform/Linux/X11/Repeat/RestoreOrders.h"

#include <gtest/gtest.h>

namespace tavro::x11 {
namespace {

TEST(RestoreOrders, LineNamesTheKeysInOrder) {
    EXPECT_EQ(RestoreOrders::line(KeySet().set(39).set(8).set(255)), "8 39 255\n");
    EXPECT_EQ(RestoreOrders::line({}), "\n");
}

TEST(RestoreOrders, LastCompleteLineCounts) {
    RestoreOrders orders;
    EXPECT_TRUE(orders.keys().none());
    orders.take("38 39\n24");
    EXPECT_EQ(orders.keys(), KeySet().set(38).set(39));
    // It might have become 240.
    orders.take("\n");
    EXPECT_EQ(orders.keys(), KeySet().set(24));
    orders.take("1\n2\n\n");
    EXPECT_TRUE(orders.keys().none());
}

TEST(RestoreOrders, LineCutAnywhereReadsTheSame) {
    const auto keys = ~KeySet().set(0).set(100);
    const auto line = RestoreOrders::line(keys);
    for (std::size_t cut = 0; cut <= line.size(); ++cut) {
        RestoreOrders orders;
        orders.take(line.substr(0, cut));
        orders.take(line.substr(cut));
        EXPECT_EQ(orders.keys(), keys);
    }
}

TEST(RestoreOrders, WhatIsNoKeyIsSkipped) {
    RestoreOrders orders;
    orders.take("38 x -1 256 39z 99999999999999999999999 24\n");
    EXPECT_EQ(orders.keys(), KeySet().set(38).set(24));
}

} // namespace
} // namespace tavro::x11
