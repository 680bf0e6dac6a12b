#include "Platform/Linux/Jack/ScheduledMessages.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <vector>

namespace tavro::jack {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t last = std::numeric_limits<std::uint32_t>::max();

Bytes bytesOf(const ScheduledMessages::Message& message) {
    return {message.bytes.begin(), message.bytes.begin() + message.size};
}

/// The bytes of the earliest message up to this stamp, which is played; none when nothing is due.
Bytes play(ScheduledMessages& messages, std::uint32_t stamp) {
    const auto due = messages.earliest(stamp);
    if (!due) {
        return {};
    }
    const auto* const message = messages.take(*due);
    if (message == nullptr) {
        return {};
    }
    auto bytes = bytesOf(*message);
    messages.release(*due);
    return bytes;
}

/// Its delay is running already.
MidiTicket add(ScheduledMessages& messages, std::uint32_t stamp, const Bytes& bytes, std::uint16_t port = 0) {
    const auto ticket = messages.add(stamp, port, bytes);
    EXPECT_TRUE(ticket.has_value());
    messages.start(ticket.value_or(0), 0);
    return ticket.value_or(0);
}

TEST(ScheduledMessages, MessageIsDueFromItsStampOn) {
    ScheduledMessages messages;
    add(messages, 100, {0x90, 60, 1}, 1);
    EXPECT_FALSE(messages.earliest(99));
    const auto due = messages.earliest(100);
    ASSERT_TRUE(due);
    EXPECT_EQ(due->stamp(), 100U);
    const auto* const message = messages.take(*due);
    ASSERT_NE(message, nullptr);
    EXPECT_EQ(message->port, 1U);
    EXPECT_EQ(bytesOf(*message), (Bytes{0x90, 60, 1}));
    messages.release(*due);
    EXPECT_FALSE(messages.earliest(1000));
}

TEST(ScheduledMessages, DelayCountsFromTheStampAtWhichItBegins) {
    ScheduledMessages messages;
    const auto ticket = messages.add(30, 0, Bytes{1});
    ASSERT_TRUE(ticket);
    EXPECT_FALSE(messages.earliest(1000));
    EXPECT_EQ(messages.stampOf(*ticket), std::nullopt);
    messages.start(*ticket, last - 9);
    EXPECT_EQ(messages.stampOf(*ticket), 20U);
    EXPECT_FALSE(messages.earliest(19));
    EXPECT_EQ(play(messages, 20), (Bytes{1}));
    EXPECT_EQ(messages.stampOf(*ticket), std::nullopt);
}

TEST(ScheduledMessages, BeginWithAllThatWereAddedBeforeAndWait) {
    ScheduledMessages messages;
    const auto first = messages.add(1, 0, Bytes{1});
    const auto second = messages.add(2, 0, Bytes{2});
    const auto third = messages.add(3, 0, Bytes{3});
    ASSERT_TRUE(first && second && third);
    messages.start(*second, 100);
    messages.start(*third, 200);
    EXPECT_EQ(messages.stampOf(*first), 101U);
    EXPECT_EQ(messages.stampOf(*second), 102U);
    EXPECT_EQ(messages.stampOf(*third), 203U);
}

TEST(ScheduledMessages, MessageThatHasNotBegunCanBeCancelledAndNeverBegins) {
    ScheduledMessages messages;
    const auto first = messages.add(1, 0, Bytes{1});
    const auto second = messages.add(2, 0, Bytes{2});
    ASSERT_TRUE(first && second);
    EXPECT_TRUE(messages.cancel(*first));
    messages.start(*second, 100);
    EXPECT_EQ(play(messages, 200), (Bytes{2}));
    EXPECT_FALSE(messages.earliest(200));
}

TEST(ScheduledMessages, ComeInTheOrderOfTheirStampsAndThenOfAdding) {
    ScheduledMessages messages;
    const auto first = add(messages, 5, {1});
    add(messages, 30, {2});
    add(messages, 20, {3});
    // It takes the place of the first, and still comes after the one of its stamp that was there.
    ASSERT_TRUE(messages.cancel(first));
    add(messages, 20, {4});
    EXPECT_EQ(play(messages, 100), (Bytes{3}));
    EXPECT_EQ(play(messages, 100), (Bytes{4}));
    EXPECT_EQ(play(messages, 100), (Bytes{2}));
    EXPECT_EQ(play(messages, 100), Bytes{});
}

TEST(ScheduledMessages, StampsMayWrap) {
    ScheduledMessages messages;
    add(messages, 4, {2});
    add(messages, last - 3, {1});
    EXPECT_FALSE(messages.earliest(last - 4));
    EXPECT_EQ(play(messages, last - 3), (Bytes{1}));
    EXPECT_FALSE(messages.earliest(last));
    EXPECT_FALSE(messages.earliest(3));
    EXPECT_EQ(play(messages, 4), (Bytes{2}));
}

TEST(ScheduledMessages, FullPoolRefusesUntilAPlaceIsFree) {
    ScheduledMessages messages;
    std::vector<MidiTicket> tickets;
    for (std::uint32_t number = 0; number < ScheduledMessages::capacity; ++number) {
        tickets.push_back(add(messages, number, {static_cast<std::uint8_t>(number)}));
    }
    EXPECT_FALSE(messages.add(0, 0, Bytes{7}));
    EXPECT_EQ(play(messages, 1000), (Bytes{0}));
    EXPECT_TRUE(messages.add(500, 0, Bytes{7}));
    EXPECT_FALSE(messages.add(500, 0, Bytes{7}));
    EXPECT_TRUE(messages.cancel(tickets[50]));
    EXPECT_TRUE(messages.add(500, 0, Bytes{7}));
    EXPECT_FALSE(messages.add(500, 0, Bytes{7}));
}

TEST(ScheduledMessages, RefusesWhatIsNoShortMessage) {
    ScheduledMessages messages;
    EXPECT_FALSE(messages.add(0, 0, {}));
    EXPECT_FALSE(messages.add(0, 0, Bytes{0xF0, 1, 2, 0xF7}));
    EXPECT_FALSE(messages.earliest(100));
}

TEST(ScheduledMessages, CancelledMessageIsNeverFound) {
    ScheduledMessages messages;
    const auto ticket = add(messages, 10, {1});
    EXPECT_TRUE(messages.cancel(ticket));
    EXPECT_FALSE(messages.earliest(100));
    EXPECT_FALSE(messages.cancel(ticket));
}

TEST(ScheduledMessages, MessageCancelledAfterItWasFoundIsNotTaken) {
    ScheduledMessages messages;
    const auto ticket = add(messages, 10, {1});
    const auto due = messages.earliest(10);
    ASSERT_TRUE(due);
    EXPECT_TRUE(messages.cancel(ticket));
    EXPECT_EQ(messages.take(*due), nullptr);
    // The same place with the same stamp, and yet another message.
    add(messages, 10, {2});
    EXPECT_EQ(messages.take(*due), nullptr);
    EXPECT_EQ(play(messages, 10), (Bytes{2}));
}

TEST(ScheduledMessages, TakenMessageCannotBeCancelled) {
    ScheduledMessages messages;
    const auto ticket = add(messages, 10, {1});
    const auto due = messages.earliest(10);
    ASSERT_TRUE(due);
    ASSERT_NE(messages.take(*due), nullptr);
    EXPECT_FALSE(messages.cancel(ticket));
    EXPECT_FALSE(messages.earliest(100));
    messages.release(*due);
    EXPECT_FALSE(messages.cancel(ticket));
}

TEST(ScheduledMessages, TicketOfAPlayedMessageDoesNotMeanTheNextOneOfItsPlace) {
    ScheduledMessages messages;
    const auto ticket = add(messages, 10, {1});
    EXPECT_EQ(play(messages, 10), (Bytes{1}));
    add(messages, 10, {2});
    EXPECT_FALSE(messages.cancel(ticket));
    messages.settle(ticket);
    EXPECT_FALSE(messages.isSettledOneWaiting());
    EXPECT_EQ(play(messages, 10), (Bytes{2}));
}

TEST(ScheduledMessages, MessagePutBackIsDueAgainAndKeepsItsOrder) {
    ScheduledMessages messages;
    add(messages, 10, {1});
    add(messages, 10, {2});
    const auto due = messages.earliest(10);
    ASSERT_TRUE(due);
    ASSERT_NE(messages.take(*due), nullptr);
    messages.putBack(*due);
    EXPECT_EQ(play(messages, 10), (Bytes{1}));
    EXPECT_EQ(play(messages, 10), (Bytes{2}));
}

TEST(ScheduledMessages, MessagePutBackCanBeCancelled) {
    ScheduledMessages messages;
    const auto ticket = add(messages, 10, {1});
    const auto due = messages.earliest(10);
    ASSERT_TRUE(due);
    ASSERT_NE(messages.take(*due), nullptr);
    messages.putBack(*due);
    EXPECT_TRUE(messages.cancel(ticket));
    EXPECT_FALSE(messages.earliest(100));
}

TEST(ScheduledMessages, SettledOnesAreToldUntilTheyArePlayedOrOrdered) {
    ScheduledMessages messages;
    const auto first = add(messages, 10, {1});
    const auto second = add(messages, 20, {2});
    const auto third = add(messages, 30, {3});
    EXPECT_EQ(messages.unorderedSettled(), std::nullopt);
    messages.settle(first);
    messages.settle(second);
    messages.settle(third);
    EXPECT_EQ(messages.unorderedSettled(), first);
    EXPECT_EQ(play(messages, 10), (Bytes{1}));
    EXPECT_EQ(messages.unorderedSettled(), second);
    messages.setOrdered(second);
    EXPECT_EQ(messages.unorderedSettled(), third);
    messages.setOrdered(third);
    EXPECT_EQ(messages.unorderedSettled(), std::nullopt);
    EXPECT_TRUE(messages.isSettledOneWaiting());
    EXPECT_EQ(play(messages, 20), (Bytes{2}));
    EXPECT_EQ(play(messages, 30), (Bytes{3}));
    EXPECT_FALSE(messages.isSettledOneWaiting());
}

TEST(ScheduledMessages, MessageThatWasTakenWhileItWasCancelledIsSettled) {
    ScheduledMessages messages;
    const auto ticket = add(messages, 10, {1});
    const auto due = messages.earliest(10);
    ASSERT_TRUE(due);
    ASSERT_NE(messages.take(*due), nullptr);
    ASSERT_FALSE(messages.cancel(ticket));
    messages.putBack(*due);
    EXPECT_EQ(messages.unorderedSettled(), ticket);
    // It has been promised to be heard.
    EXPECT_EQ(messages.cancelAll(0), 0U);
    EXPECT_EQ(play(messages, 10), (Bytes{1}));
}

TEST(ScheduledMessages, CancelAllLeavesOtherPortsAndSettledOnes) {
    ScheduledMessages messages;
    add(messages, 10, {1}, 0);
    add(messages, 20, {2}, 1);
    add(messages, 30, {3}, 1);
    messages.settle(add(messages, 40, {4}, 1));
    EXPECT_EQ(messages.cancelAll(1), 2U);
    EXPECT_EQ(play(messages, 100), (Bytes{1}));
    EXPECT_EQ(play(messages, 100), (Bytes{4}));
    EXPECT_EQ(messages.cancelAll(1), 0U);
}

TEST(ScheduledMessages, PlacesAreUsedAgainAndAgain) {
    ScheduledMessages messages;
    for (std::uint32_t round = 0; round < 10000; ++round) {
        const auto value = static_cast<std::uint8_t>(round % 128);
        const auto ticket = add(messages, round, {value});
        if (round % 3 == 0) {
            ASSERT_TRUE(messages.cancel(ticket));
        } else {
            ASSERT_EQ(play(messages, round), (Bytes{value}));
        }
        ASSERT_FALSE(messages.earliest(round + 1000));
    }
}

} // namespace
} // namespace tavro::jack
