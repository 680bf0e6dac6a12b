#pragma once

#include "Platform/Linux/Jack/MessageRing.h"
#include "Platform/Linux/Jack/PeriodTarget.h"
#include "Platform/Linux/Jack/ScheduledMessages.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace tavro::jack {

/// Fills periods with what `MessageHandover` handed over through a ring and with what was scheduled, in the
/// order of their stamps, each one period after its stamp. A gesture that comes in another period than the
/// one after its stamp lies as near to that as it can, and what it has scheduled lies at its delays from
/// there. Allocates nothing, locks nothing and calls no system. Belongs to the second thread of both, which
/// must outlive this.
class MessageMerge {
public:
    MessageMerge(MessageRing& ring, ScheduledMessages& scheduled) : ring_(ring), scheduled_(scheduled) {}

    /// Takes everything in the ring and every scheduled message that is due. What finds no place is left for
    /// the next period, with all that comes after it, and so is what must not go out before a settled message
    /// that is not due yet. Returns how many messages were lost because their port is not there.
    std::size_t fill(std::uint32_t periodStart, std::uint32_t frames, PeriodTarget& target);

private:
    struct Period {
        std::uint32_t start;
        std::uint32_t frames;
        PeriodTarget& target;
        std::array<std::uint32_t, PeriodTarget::portCount> earliest{};
        std::size_t lost = 0;
    };

    enum class Outcome : std::uint8_t { done, waits, full };

    Outcome play(Period& period, const MessageRing::Head& head);
    Outcome playMessage(Period& period, const MessageRing::Head& head, std::uint16_t port);
    Outcome playSettled(Period& period);
    void startScheduled(const Period& period, std::uint32_t stamp);
    /// What is due in the period up to this stamp. False when the period takes no more.
    bool playScheduled(Period& period, std::uint32_t lastStamp);
    static std::uint8_t* reserve(Period& period, std::uint32_t stamp, std::uint16_t port, std::size_t size);
    [[nodiscard]] MidiTicket ticketAtFront() const;

    MessageRing& ring_;
    ScheduledMessages& scheduled_;
    /// By how many frames the running gesture comes later than its stamp wants it; nothing while none of its
    /// messages has its place. Wraps around, like the stamps.
    std::optional<std::uint32_t> shift_;
};

} // namespace tavro::jack
