#include "Platform/Linux/Jack/MessageMerge.h"

#include "Platform/Linux/Jack/PeriodClock.h"

#include <algorithm>

namespace tavro::jack {

std::size_t MessageMerge::fill(std::uint32_t periodStart, std::uint32_t frames, PeriodTarget& target) {
    Period period{.start = periodStart, .frames = frames, .target = target};
    while (const auto head = ring_.front()) {
        // Looked for anew for every message: what was scheduled before it was sent is visible only now.
        if (!playScheduled(period, head->stamp) || !playFromRing(period, *head)) {
            return period.lost;
        }
    }
    playScheduled(period, periodStart - 1);
    return period.lost;
}

bool MessageMerge::playScheduled(Period& period, std::uint32_t lastStamp) {
    while (const auto due = scheduled_.earliest(lastStamp)) {
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

bool MessageMerge::playFromRing(Period& period, const MessageRing::Head& head) {
    if (!period.target.hasPort(head.port)) {
        ring_.discard();
        ++period.lost;
        return true;
    }
    auto* const place = reserve(period, head.stamp, head.port, head.size);
    if (place != nullptr) {
        ring_.pop({place, head.size});
    }
    return place != nullptr;
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

} // namespace tavro::jack
