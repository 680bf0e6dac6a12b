#include "Platform/Linux/Jack/MessageRing.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace tavro::jack {

MessageRing::MessageRing(std::size_t capacity)
    : buffer_(std::bit_ceil(capacity)), mask_(buffer_.size() - 1) {}

bool MessageRing::push(std::uint32_t stamp, std::uint16_t port, std::span<const std::uint8_t> message) {
    if (message.empty() || message.size() > longestMessage) {
        return false;
    }
    const auto written = written_.load(std::memory_order_relaxed);
    // Acquire: the reader is done with the bytes that it gave back.
    const auto used = written - read_.load(std::memory_order_acquire);
    const auto needed = sizeof(Head) + message.size();
    if (buffer_.size() - used < needed) {
        return false;
    }
    const Head head{stamp, port, static_cast<std::uint16_t>(message.size())};
    copyIn(written, std::as_bytes(std::span(&head, 1)));
    copyIn(written + sizeof(Head), std::as_bytes(message));
    // Release: a reader that sees the new count sees the bytes too.
    written_.store(written + needed, std::memory_order_release);
    return true;
}

std::optional<MessageRing::Head> MessageRing::front() const {
    if (isEmpty()) {
        return std::nullopt;
    }
    Head head{};
    copyOut(read_.load(std::memory_order_relaxed), std::as_writable_bytes(std::span(&head, 1)));
    return head;
}

void MessageRing::pop(std::span<std::uint8_t> target) {
    const auto read = read_.load(std::memory_order_relaxed);
    copyOut(read + sizeof(Head), std::as_writable_bytes(target));
    read_.store(read + sizeof(Head) + target.size(), std::memory_order_release);
}

void MessageRing::discard() {
    if (const auto head = front()) {
        read_.store(read_.load(std::memory_order_relaxed) + sizeof(Head) + head->size,
                    std::memory_order_release);
    }
}

bool MessageRing::isEmpty() const {
    return written_.load(std::memory_order_acquire) == read_.load(std::memory_order_acquire);
}

void MessageRing::copyIn(std::size_t position, std::span<const std::byte> bytes) {
    const auto start = position & mask_;
    const auto untilEnd = std::min(bytes.size(), buffer_.size() - start);
    std::memcpy(&buffer_[start], bytes.data(), untilEnd);
    std::memcpy(buffer_.data(), bytes.data() + untilEnd, bytes.size() - untilEnd);
}

void MessageRing::copyOut(std::size_t position, std::span<std::byte> bytes) const {
    const auto start = position & mask_;
    const auto untilEnd = std::min(bytes.size(), buffer_.size() - start);
    std::memcpy(bytes.data(), &buffer_[start], untilEnd);
    std::memcpy(bytes.data() + untilEnd, buffer_.data(), bytes.size() - untilEnd);
}

} // namespace tavro::jack
