#pragma once

#include "Platform/Linux/Jack/MessageRing.h"
#include "Platform/Linux/Jack/PeriodTarget.h"
#include "Platform/Linux/Jack/ScheduledMessages.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace tavro::jack {

/// Fills periods with the messages of a ring and with those that were scheduled, in the order of their
/// stamps, each one period after its stamp. Allocates nothing, locks nothing and calls no system. Belongs to
/// the second thread of both, which must outlive this.
class MessageMerge {
public:
    MessageMerge(MessageRing& ring, ScheduledMessages& scheduled) : ring_(ring), scheduled_(scheduled) {}

    /// Takes everything in the ring and every scheduled message whose time lies before the period or before
    /// something in the ring. What finds no place is left for the next period, with all that comes after it.
    /// Returns how many messages were lost because their port is not there.
    std::size_t fill(std::uint32_t periodStart, std::uint32_t frames, PeriodTarget& target);

private:
    struct Period {
        std::uint32_t start;
        std::uint32_t frames;
        PeriodTarget& target;
        std::array<std::uint32_t, PeriodTarget::portCount> earliest{};
        std::size_t lost = 0;
    };

    /// Both return false when the period takes no more.
    bool playScheduled(Period& period, std::uint32_t lastStamp);
    bool playFromRing(Period& period, const MessageRing::Head& head);
    static std::uint8_t* reserve(Period& period, std::uint32_t stamp, std::uint16_t port, std::size_t size);

    MessageRing& ring_;
    ScheduledMessages& scheduled_;
};

} // namespace tavro::jack
