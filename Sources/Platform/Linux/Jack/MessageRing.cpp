#include "Platform/Linux/Jack/MessageRing.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace tavro::jack {

MessageRing::MessageRing(std::size_t capacity)
    : buffer_(std::bit_ceil(capacity)), mask_(buffer_.size() - 1) {}

bool MessageRing::push(std::uint32_t stamp, std::uint16_t tag, std::span<const std::uint8_t> message) {
    const auto isWritten = write(stamp, tag, message);
    publish();
    return isWritten;
}

bool MessageRing::write(std::uint32_t stamp, std::uint16_t tag, std::span<const std::uint8_t> message,
                        std::size_t kept) {
    const auto needed = sizeof(Head) + message.size();
    if (message.empty() || message.size() > longestMessage || !hasRoom(needed + kept)) {
        return false;
    }
    const Head head{stamp, tag, static_cast<std::uint16_t>(message.size())};
    copyIn(end_, std::as_bytes(std::span(&head, 1)));
    copyIn(end_ + sizeof(Head), std::as_bytes(message));
    end_ += needed;
    return true;
}

bool MessageRing::hasRoom(std::size_t bytes) const {
    // Acquire: the reader is done with the bytes that it gave back.
    const auto used = end_ - read_.load(std::memory_order_acquire);
    return bytes <= buffer_.size() - used;
}

void MessageRing::publish() {
    // Release: a reader that sees the new count sees the bytes too.
    written_.store(end_, std::memory_order_release);
}

std::optional<MessageRing::Head> MessageRing::front() const {
    if (isEmpty()) {
        return std::nullopt;
    }
    Head head{};
    copyOut(read_.load(std::memory_order_relaxed), std::as_writable_bytes(std::span(&head, 1)));
    return head;
}

void MessageRing::peek(std::span<std::uint8_t> target) const {
    copyOut(read_.load(std::memory_order_relaxed) + sizeof(Head), std::as_writable_bytes(target));
}

void MessageRing::pop(std::span<std::uint8_t> target) {
    peek(target);
    discard();
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
