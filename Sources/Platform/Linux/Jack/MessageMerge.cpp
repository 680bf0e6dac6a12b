#include "Platform/Linux/Jack/MessageMerge.h"

#include "Platform/Linux/Jack/HandoverTag.h"
#include "Platform/Linux/Jack/PeriodClock.h"

#include <algorithm>
#include <cstring>

namespace tavro::jack {

std::size_t MessageMerge::fill(std::uint32_t periodStart, std::uint32_t frames, PeriodTarget& target) {
    Period period{.start = periodStart, .frames = frames, .target = target};
    while (const auto head = ring_.front()) {
        const auto outcome = play(period, *head);
        if (outcome == Outcome::full) {
            return period.lost;
        }
        if (outcome == Outcome::waits) {
            break;
        }
    }
    playScheduled(period, periodStart - 1);
    return period.lost;
}

MessageMerge::Outcome MessageMerge::play(Period& period, const MessageRing::Head& head) {
    const auto tag = HandoverTag::of(head.tag);
    if (tag.beginsGesture) {
        shift_.reset();
    }
    if (tag.kind == HandoverTag::Kind::message) {
        return playMessage(period, head, tag.port);
    }
    if (tag.kind == HandoverTag::Kind::afterSettled) {
        return playSettled(period);
    }
    startScheduled(period, head.stamp);
    return Outcome::done;
}

MessageMerge::Outcome MessageMerge::playMessage(Period& period, const MessageRing::Head& head,
                                                std::uint16_t port) {
    if (!period.target.hasPort(port)) {
        ring_.discard();
        ++period.lost;
        return Outcome::done;
    }
    const auto stamp = head.stamp + shift_.value_or(0);
    auto* const place = playScheduled(period, stamp) ? reserve(period, stamp, port, head.size) : nullptr;
    if (place == nullptr) {
        return Outcome::full;
    }
    ring_.pop({place, head.size});
    shift_ = period.start + period.earliest[port] - period.frames - head.stamp;
    return Outcome::done;
}

MessageMerge::Outcome MessageMerge::playSettled(Period& period) {
    if (const auto stamp = scheduled_.stampOf(ticketAtFront())) {
        // To play it early would tear its gesture apart, and it is as late as that is.
        if (!isBefore(*stamp, period.start)) {
            return Outcome::waits;
        }
        if (!playScheduled(period, *stamp)) {
            return Outcome::full;
        }
    }
    ring_.discard();
    return Outcome::done;
}

void MessageMerge::startScheduled(const Period& period, std::uint32_t stamp) {
    // Where a message of the gesture would lie if it had one.
    const auto shift = shift_.value_or(
        period.start + offsetOnePeriodLater(stamp, period.start, period.frames, 0) - period.frames - stamp);
    scheduled_.start(ticketAtFront(), stamp + shift);
    ring_.discard();
}

bool MessageMerge::playScheduled(Period& period, std::uint32_t lastStamp) {
    const auto lastOfPeriod = period.start - 1;
    const auto last = isBefore(lastStamp, lastOfPeriod) ? lastStamp : lastOfPeriod;
    // Looked for anew for every message: what was scheduled before it was sent is visible only now.
    while (const auto due = scheduled_.earliest(last)) {
        const auto* const message = scheduled_.take(*due);
        if (message == nullptr) {
            continue;
        }
        if (!period.target.hasPort(message->port)) {
            ++period.lost;
        } else if (auto* const place = reserve(period, due->stamp(), message->port, message->size)) {
            std::copy_n(message->bytes.begin(), message->size, place);
        } else {
            scheduled_.putBack(*due);
            return false;
        }
        scheduled_.release(*due);
    }
    return true;
}

std::uint8_t* MessageMerge::reserve(Period& period, std::uint32_t stamp, std::uint16_t port,
                                    std::size_t size) {
    const auto offset = offsetOnePeriodLater(stamp, period.start, period.frames, period.earliest[port]);
    auto* const place = period.target.reserve(port, offset, size);
    if (place != nullptr) {
        period.earliest[port] = offset;
    }
    return place;
}

MidiTicket MessageMerge::ticketAtFront() const {
    std::array<std::uint8_t, sizeof(MidiTicket)> bytes{};
    ring_.peek(bytes);
    MidiTicket ticket = 0;
    std::memcpy(&ticket, bytes.data(), sizeof ticket);
    return ticket;
}

} // namespace tavro::jack
