#include "Platform/Linux/Jack/MessageRing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <thread>
#include <vector>

namespace tavro::jack {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes take(MessageRing& ring) {
    const auto head = ring.front();
    if (!head) {
        return {};
    }
    Bytes bytes(head->size);
    ring.pop(bytes);
    return bytes;
}

TEST(MessageRing, BeginsEmpty) {
    const MessageRing ring(64);
    EXPECT_TRUE(ring.isEmpty());
    EXPECT_EQ(ring.front(), std::nullopt);
}

TEST(MessageRing, GivesBackWhatWasPutInInOrder) {
    MessageRing ring(64);
    ASSERT_TRUE(ring.push(17, 1, Bytes{0x90, 60, 100}));
    ASSERT_TRUE(ring.push(18, 0, Bytes{0xF8}));
    EXPECT_FALSE(ring.isEmpty());
    EXPECT_EQ(ring.front(), (MessageRing::Head{.stamp = 17, .tag = 1, .size = 3}));
    EXPECT_EQ(take(ring), (Bytes{0x90, 60, 100}));
    EXPECT_EQ(ring.front(), (MessageRing::Head{.stamp = 18, .tag = 0, .size = 1}));
    EXPECT_EQ(take(ring), (Bytes{0xF8}));
    EXPECT_TRUE(ring.isEmpty());
}

TEST(MessageRing, LookingDoesNotTake) {
    MessageRing ring(64);
    ASSERT_TRUE(ring.push(1, 0, Bytes{1, 2}));
    EXPECT_EQ(ring.front(), ring.front());
    EXPECT_EQ(take(ring), (Bytes{1, 2}));
}

TEST(MessageRing, DiscardTakesOneOnly) {
    MessageRing ring(64);
    ASSERT_TRUE(ring.push(1, 0, Bytes{1, 2}));
    ASSERT_TRUE(ring.push(2, 0, Bytes{3}));
    ring.discard();
    EXPECT_EQ(take(ring), (Bytes{3}));
}

TEST(MessageRing, FullRingRefusesAndKeepsWhatItHas) {
    // A message of eight bytes takes sixteen.
    MessageRing ring(32);
    const Bytes first(8, 1);
    const Bytes second(8, 2);
    ASSERT_TRUE(ring.push(1, 0, first));
    ASSERT_TRUE(ring.push(2, 0, second));
    EXPECT_FALSE(ring.push(3, 0, Bytes{3}));
    EXPECT_EQ(take(ring), first);
    EXPECT_TRUE(ring.push(4, 0, Bytes(8, 4)));
    EXPECT_EQ(take(ring), second);
    EXPECT_EQ(take(ring), Bytes(8, 4));
    EXPECT_TRUE(ring.isEmpty());
}

TEST(MessageRing, RefusesWhatIsNoMessage) {
    MessageRing ring(4096);
    EXPECT_FALSE(ring.push(1, 0, {}));
    EXPECT_FALSE(ring.push(1, 0, Bytes(MessageRing::longestMessage + 1)));
    EXPECT_TRUE(ring.isEmpty());
    const Bytes longest(MessageRing::longestMessage, 7);
    EXPECT_TRUE(ring.push(1, 0, longest));
    EXPECT_EQ(take(ring), longest);
}

TEST(MessageRing, MessagesSurviveTheEndOfTheBuffer) {
    MessageRing ring(64);
    for (std::uint32_t round = 0; round < 1000; ++round) {
        Bytes message(1 + round % 40);
        std::ranges::generate(message,
                              [next = round]() mutable { return static_cast<std::uint8_t>(next++); });
        ASSERT_TRUE(ring.push(round, 1, message));
        ASSERT_EQ(ring.front()->stamp, round);
        ASSERT_EQ(take(ring), message);
    }
}

TEST(MessageRing, WhatIsWrittenIsSeenTogetherOnceItIsPublished) {
    MessageRing ring(64);
    ASSERT_TRUE(ring.write(1, 0, Bytes{1}));
    ASSERT_TRUE(ring.write(2, 0, Bytes{2}));
    EXPECT_TRUE(ring.isEmpty());
    EXPECT_EQ(ring.front(), std::nullopt);
    ring.publish();
    EXPECT_EQ(take(ring), (Bytes{1}));
    EXPECT_EQ(take(ring), (Bytes{2}));
    EXPECT_TRUE(ring.isEmpty());
}

TEST(MessageRing, RoomThatIsKeptStaysFree) {
    MessageRing ring(32);
    EXPECT_TRUE(ring.hasRoom(32));
    EXPECT_FALSE(ring.hasRoom(33));
    ASSERT_FALSE(ring.write(1, 0, Bytes(8, 1), 17));
    ASSERT_TRUE(ring.write(1, 0, Bytes(8, 1), 16));
    EXPECT_TRUE(ring.hasRoom(16));
    EXPECT_FALSE(ring.hasRoom(17));
    ASSERT_TRUE(ring.write(2, 0, Bytes(8, 2)));
    EXPECT_FALSE(ring.hasRoom(1));
    ring.publish();
    EXPECT_EQ(take(ring), Bytes(8, 1));
    EXPECT_TRUE(ring.hasRoom(16));
}

TEST(MessageRing, PeekingDoesNotTake) {
    MessageRing ring(64);
    ASSERT_TRUE(ring.push(1, 0, Bytes{1, 2, 3}));
    Bytes bytes(3);
    ring.peek(bytes);
    EXPECT_EQ(bytes, (Bytes{1, 2, 3}));
    EXPECT_EQ(take(ring), (Bytes{1, 2, 3}));
}

TEST(MessageRing, TwoThreadsLoseNothing) {
    constexpr std::uint32_t count = 20000;
    MessageRing ring(256);
    std::thread writer([&ring] {
        for (std::uint32_t number = 0; number < count;) {
            const Bytes message(1 + number % 5, static_cast<std::uint8_t>(number));
            if (ring.push(number, static_cast<std::uint16_t>(number % 2), message)) {
                ++number;
            } else {
                std::this_thread::yield();
            }
        }
    });
    std::uint32_t wrong = 0;
    for (std::uint32_t number = 0; number < count;) {
        const auto head = ring.front();
        if (!head) {
            std::this_thread::yield();
            continue;
        }
        const Bytes expected(1 + number % 5, static_cast<std::uint8_t>(number));
        const auto isRight = head->stamp == number && head->tag == number % 2;
        wrong += isRight && take(ring) == expected ? 0 : 1;
        if (!isRight) {
            ring.discard();
        }
        ++number;
    }
    writer.join();
    EXPECT_EQ(wrong, 0U);
    EXPECT_TRUE(ring.isEmpty());
}

} // namespace
} // namespace tavro::jack
