#include "Platform/Linux/Jack/MessageHandover.h"

#include <array>
#include <cstring>

namespace tavro::jack {

namespace {

constexpr auto ticketEntrySize = sizeof(MessageRing::Head) + sizeof(MidiTicket);

} // namespace

void MessageHandover::begin(std::uint32_t stamp) {
    stamp_ = stamp;
    isAtBeginning_ = true;
    last_.reset();
}

bool MessageHandover::send(std::uint16_t port, std::span<const std::uint8_t> message) {
    // The end of the gesture must find its room.
    const auto kept = last_ ? ticketEntrySize : 0;
    while (const auto ticket = scheduled_.unorderedSettled()) {
        if (!writeTicket(HandoverTag::Kind::afterSettled, *ticket, kept)) {
            return false;
        }
        scheduled_.setOrdered(*ticket);
    }
    return write(HandoverTag::Kind::message, port, message, kept);
}

std::optional<MidiTicket> MessageHandover::schedule(std::uint16_t port, std::span<const std::uint8_t> message,
                                                    std::uint32_t delay) {
    if (!ring_.hasRoom(ticketEntrySize)) {
        return std::nullopt;
    }
    const auto ticket = scheduled_.add(delay, port, message);
    if (ticket) {
        last_ = ticket;
    }
    return ticket;
}

void MessageHandover::end() {
    if (last_) {
        // Its room was kept.
        static_cast<void>(writeTicket(HandoverTag::Kind::gestureEnd, *last_, 0));
        last_.reset();
    }
    ring_.publish();
}

void MessageHandover::flush() {
    end();
    begin(stamp_);
}

bool MessageHandover::write(HandoverTag::Kind kind, std::uint16_t port, std::span<const std::uint8_t> bytes,
                            std::size_t kept) {
    const HandoverTag tag{
        .kind = kind, .beginsGesture = isAtBeginning_, .port = static_cast<std::uint8_t>(port)};
    const auto isWritten = ring_.write(stamp_, tag.packed(), bytes, kept);
    isAtBeginning_ = isAtBeginning_ && !isWritten;
    return isWritten;
}

bool MessageHandover::writeTicket(HandoverTag::Kind kind, MidiTicket ticket, std::size_t kept) {
    std::array<std::uint8_t, sizeof ticket> bytes{};
    std::memcpy(bytes.data(), &ticket, sizeof ticket);
    return write(kind, 0, bytes, kept);
}

} // namespace tavro::jack
