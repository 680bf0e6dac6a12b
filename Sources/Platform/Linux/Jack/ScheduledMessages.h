#pragma once

#include "PlatformInterfaces/MidiSystem.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace tavro::jack {

/// Short messages that wait for their time between one thread, which adds them and may take them back, and
/// one other, which plays them. Neither ever waits for the other: a message that both want at the same time
/// goes to exactly one of them. A message is added with a delay, and due once the second thread has told from
/// when on that counts. Stamps count frames and wrap around; two that are compared lie less than half the
/// counter apart.
class ScheduledMessages {
public:
    static constexpr std::size_t capacity = 128;
    static constexpr std::size_t longestMessage = 3;

    struct Message {
        std::uint16_t port;
        std::uint8_t size;
        std::array<std::uint8_t, longestMessage> bytes;
    };

    /// A message that the second thread has found.
    class Due {
    public:
        [[nodiscard]] std::uint32_t stamp() const;

    private:
        friend class ScheduledMessages;
        std::size_t index_ = 0;
        std::uint64_t state_ = 0;
    };

    ScheduledMessages();

    // First thread.

    /// Nothing when every place is taken, and when the message is empty or longer than `longestMessage`.
    [[nodiscard]] std::optional<MidiTicket> add(std::uint32_t delay, std::uint16_t port,
                                                std::span<const std::uint8_t> message);

    /// True when the message is gone and will not be played. False when it was played, or when the second
    /// thread has just taken it: it is settled then.
    [[nodiscard]] bool cancel(MidiTicket ticket);

    /// Tells that nothing may overtake this message any more.
    void settle(MidiTicket ticket);

    /// Takes back every message for the port that is not settled. Returns how many those were.
    std::size_t cancelAll(std::uint16_t port);

    /// A settled message that is not played yet and was not named to `setOrdered`; nothing when there is
    /// none.
    [[nodiscard]] std::optional<MidiTicket> unorderedSettled();

    /// The second thread is going to be told of this settled message before all that comes now.
    void setOrdered(MidiTicket ticket);

    /// Whether a settled message is not played yet.
    [[nodiscard]] bool isSettledOneWaiting();

    // Second thread.

    /// The delays of this message and of all that were added before it and have not begun yet count from this
    /// stamp.
    void start(MidiTicket last, std::uint32_t stamp);

    /// When the message is due; nothing when it is over or has not begun.
    [[nodiscard]] std::optional<std::uint32_t> stampOf(MidiTicket ticket) const;

    /// The message with the least stamp up to this one, the one added first among equals; nothing when no
    /// message is due.
    [[nodiscard]] std::optional<Due> earliest(std::uint32_t lastStamp) const;

    /// The message, which nobody can take back any more until `release` or `putBack`; null when somebody
    /// was quicker.
    [[nodiscard]] const Message* take(const Due& due);

    /// Ends the taken message, whose place is free from now on.
    void release(const Due& due);

    /// Lets the taken message wait again as if it had not been taken.
    void putBack(const Due& due);

private:
    struct Slot {
        std::atomic<std::uint64_t> state = 0;
        /// Belongs to the first thread while the place is free, and to the second once that has taken it.
        Message message{};
    };

    struct Settled {
        MidiTicket ticket;
        bool isOrdered;
    };

    void dropPlayed();

    std::array<Slot, capacity> slots_;
    /// How many places are not free: the second thread need not look when it is none.
    std::atomic<std::size_t> used_ = 0;
    /// First thread only.
    std::uint32_t nextNumber_ = 0;
    std::vector<Settled> settled_;
    static_assert(std::atomic<std::uint64_t>::is_always_lock_free);
};

} // namespace tavro::jack
