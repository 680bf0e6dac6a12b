#pragma once

#include "Platform/Linux/Jack/HandoverTag.h"
#include "Platform/Linux/Jack/MessageRing.h"
#include "Platform/Linux/Jack/ScheduledMessages.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace tavro::jack {

/// Hands messages over to a `MessageMerge` of the same ring and the same scheduled messages, gesture by
/// gesture. The other thread sees a gesture as a whole once it has ended, and never a part of it. Belongs to
/// the first thread of both, which must outlive this.
class MessageHandover {
public:
    MessageHandover(MessageRing& ring, ScheduledMessages& scheduled) : ring_(ring), scheduled_(scheduled) {}

    /// Begins the next gesture, at this moment in frames. The one before must have ended.
    void begin(std::uint32_t stamp);

    /// A message of the gesture that goes out at its beginning, and after every settled message. False, and
    /// nothing happens, when the ring has no room for it or it is no message.
    [[nodiscard]] bool send(std::uint16_t port, std::span<const std::uint8_t> message);

    /// A message of the gesture that goes out so many frames after its beginning. Nothing, and nothing
    /// happens, where `ScheduledMessages` does not take it or the ring has no room left for the gesture.
    [[nodiscard]] std::optional<MidiTicket>
    schedule(std::uint16_t port, std::span<const std::uint8_t> message, std::uint32_t delay);

    void end();

    /// Lets go what the gesture has so far; what follows is another gesture of the same moment.
    void flush();

private:
    [[nodiscard]] bool write(HandoverTag::Kind kind, std::uint16_t port, std::span<const std::uint8_t> bytes,
                             std::size_t kept);
    [[nodiscard]] bool writeTicket(HandoverTag::Kind kind, MidiTicket ticket, std::size_t kept);

    MessageRing& ring_;
    ScheduledMessages& scheduled_;
    std::uint32_t stamp_ = 0;
    bool isAtBeginning_ = true;
    /// The last that the gesture has scheduled.
    std::optional<MidiTicket> last_;
};

} // namespace tavro::jack
