#include "Platform/Linux/Jack/ScheduledMessages.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <limits>
#include <random>
#include <thread>
#include <utility>
#include <vector>

namespace tavro::jack {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t last = std::numeric_limits<std::uint32_t>::max();

TEST(ScheduledMessagesOfTwoThreads, EachMessageIsCancelledOrPlayedOnce) {
    constexpr std::uint32_t count = 20000;
    ScheduledMessages messages;
    // The counter wraps on the way.
    std::atomic<std::uint32_t> clock = last - count / 8;
    std::atomic<bool> isOver = false;
    // The last that is to begin, as a ring brings it; all of them can be told from none.
    std::atomic<std::uint64_t> lastPlusOne = 0;
    std::vector<unsigned> played(count);
    std::thread server([&] {
        std::minstd_rand random(1);
        const auto playDue = [&] {
            const auto now = clock.load();
            if (const auto started = lastPlusOne.load(); started != 0) {
                messages.start(static_cast<MidiTicket>(started - 1), now);
            }
            while (const auto due = messages.earliest(now)) {
                const auto* const message = messages.take(*due);
                if (message == nullptr) {
                    continue;
                }
                if (random() % 8 == 0) {
                    messages.putBack(*due);
                    continue;
                }
                const auto& bytes = message->bytes;
                ++played[bytes[0] + 256U * bytes[1] + 65536U * bytes[2]];
                messages.release(*due);
            }
        };
        while (!isOver.load()) {
            clock.fetch_add(1);
            playDue();
        }
        // The first looks for those that have not begun.
        playDue();
        clock.fetch_add(1000);
        playDue();
    });

    std::minstd_rand random(2);
    std::vector<bool> cancelled(count);
    std::vector<std::pair<MidiTicket, std::uint32_t>> open;
    unsigned refused = 0;
    const auto endOne = [&] {
        const auto chosen = random() % open.size();
        const auto [ticket, number] = open[chosen];
        open[chosen] = open.back();
        open.pop_back();
        if (random() % 2 == 0) {
            cancelled[number] = messages.cancel(ticket);
        } else {
            messages.settle(ticket);
        }
    };
    for (std::uint32_t number = 0; number < count;) {
        const Bytes bytes{static_cast<std::uint8_t>(number), static_cast<std::uint8_t>(number >> 8U),
                          static_cast<std::uint8_t>(number >> 16U)};
        const auto delay = static_cast<std::uint32_t>(random() % 16);
        if (const auto ticket = messages.add(delay, 0, bytes)) {
            lastPlusOne.store(std::uint64_t{*ticket} + 1);
            open.emplace_back(*ticket, number++);
        } else {
            ++refused;
            std::this_thread::yield();
        }
        if (open.size() > 64 || (!open.empty() && random() % 2 == 0)) {
            endOne();
        }
    }
    while (!open.empty()) {
        endOne();
    }
    isOver.store(true);
    server.join();

    unsigned cancelledCount = 0;
    unsigned playedCount = 0;
    for (std::uint32_t number = 0; number < count; ++number) {
        ASSERT_EQ(played[number], cancelled[number] ? 0U : 1U) << number;
        cancelledCount += cancelled[number] ? 1 : 0;
        playedCount += played[number];
    }
    EXPECT_FALSE(messages.isSettledOneWaiting());
    RecordProperty("cancelled", static_cast<int>(cancelledCount));
    RecordProperty("played", static_cast<int>(playedCount));
    RecordProperty("refused", static_cast<int>(refused));
}

} // namespace
} // namespace tavro::jack
