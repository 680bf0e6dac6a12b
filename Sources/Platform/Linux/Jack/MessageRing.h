#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace tavro::jack {

/// Carries messages in order from one thread to one other without a lock, an allocation or a wait. `push`,
/// `write`, `hasRoom` and `publish` belong to the first thread, `front`, `peek`, `pop` and `discard` to the
/// second, `isEmpty` to both.
class MessageRing {
public:
    struct Head {
        /// When the message was handed over, in frames.
        std::uint32_t stamp;
        /// What it is; the ring does not look at it.
        std::uint16_t tag;
        /// The number of its bytes.
        std::uint16_t size;

        friend bool operator==(const Head&, const Head&) = default;
    };

    static constexpr std::size_t longestMessage = 256;

    /// `capacity` is in bytes, a power of two; a message takes eight more than its own.
    explicit MessageRing(std::size_t capacity);

    /// False, and nothing is kept, when there is no room or when the message is empty or longer than
    /// `longestMessage`.
    [[nodiscard]] bool push(std::uint32_t stamp, std::uint16_t tag, std::span<const std::uint8_t> message);

    /// As `push`, but the second thread sees the message only with the next `publish`, together with all that
    /// were written since the last one. `kept` bytes more must have room, each message with its head.
    [[nodiscard]] bool write(std::uint32_t stamp, std::uint16_t tag, std::span<const std::uint8_t> message,
                             std::size_t kept = 0);

    /// Whether so many bytes have room, each message with its head. What has room now has it later.
    [[nodiscard]] bool hasRoom(std::size_t bytes) const;

    void publish();

    /// The head of the oldest message; nothing when the ring is empty.
    [[nodiscard]] std::optional<Head> front() const;

    /// Copies the bytes of the oldest message, which must exist. The target is as long as its head tells.
    void peek(std::span<std::uint8_t> target) const;

    /// As `peek`, and removes the message.
    void pop(std::span<std::uint8_t> target);

    /// Removes the oldest message, which must exist.
    void discard();

    /// Whether nothing is published that was not taken.
    [[nodiscard]] bool isEmpty() const;

private:
    void copyIn(std::size_t position, std::span<const std::byte> bytes);
    void copyOut(std::size_t position, std::span<std::byte> bytes) const;

    std::vector<std::byte> buffer_;
    std::size_t mask_;
    /// Bytes ever written and ever read; a position in the buffer is what is left of them under the mask.
    std::atomic<std::size_t> written_ = 0;
    std::atomic<std::size_t> read_ = 0;
    /// As `written_`, with what is not published; first thread only.
    std::size_t end_ = 0;
    static_assert(std::atomic<std::size_t>::is_always_lock_free);
};

} // namespace tavro::jack
