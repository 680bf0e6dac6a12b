#include "Platform/Linux/Guard/GuardOrders.h"

#include <gtest/gtest.h>

#include <string>

namespace tavro::guard {
namespace {

TEST(GuardOrders, EverythingIsReadAsItWasWritten) {
    const GuardOrders orders{.repeats = {8, 39, 255},
                             .connection = 0xFFFFFFFF,
                             .keyboards = {3, 17},
                             .copies = {4},
                             .receivers = {"jack synth: in\n 1", "alsa 128:0", "jack "},
                             .expectsMain = true,
                             .expectsTap = true};
    EXPECT_EQ(GuardOrders::read(orders.text()), orders);
    EXPECT_EQ(GuardOrders::read(GuardOrders().text()), GuardOrders());
    for (const auto expectsMain : {false, true}) {
        const GuardOrders half{.expectsMain = expectsMain, .expectsTap = !expectsMain};
        EXPECT_EQ(GuardOrders::read(half.text()), half);
    }
}

TEST(GuardOrders, OtherMessagesAreNone) {
    for (const auto* const text : {"", "M", "T", "order", "orders of somebody", "repeat 3"}) {
        EXPECT_EQ(GuardOrders::read(text), std::nullopt) << text;
    }
}

TEST(GuardOrders, WhatIsNoNumberOrNotKnownIsSkipped) {
    using namespace std::string_literals;
    const auto read =
        GuardOrders::read("orders\0repeat x\0repeat 3z\0repeat -1\0repeat 99999999999\0repeat 4\0later 5"s);
    EXPECT_EQ(read, GuardOrders{.repeats = {4}});
}

} // namespace
} // namespace tavro::guard
