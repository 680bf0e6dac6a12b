#pragma once

#include "Platform/Linux/X11/Connection.h"
#include "Platform/Linux/X11/GrabbedPress.h"

#include <cstdint>
#include <variant>

namespace tavro::x11 {

/// Tells the events of the server apart.
class EventReader {
public:
    /// A key went down, whoever gets it.
    struct RawPress {
        std::uint8_t key = 0;
    };

    /// A key went up, whoever gets it.
    struct RawRelease {
        std::uint8_t key = 0;
        /// Milliseconds of the server's clock.
        std::uint32_t time = 0;
    };

    /// The keys' symbols or the modifiers are others now.
    struct MappingChange {};

    /// A keyboard has been plugged in or the like.
    struct DeviceChange {};

    /// The first alternative stands for events that mean nothing here.
    using Event =
        std::variant<std::monostate, GrabbedPress, RawPress, RawRelease, MappingChange, DeviceChange>;

    EventReader() = delete;

    /// Asks for the events that are not the answer to a grab. False when the server refuses.
    [[nodiscard]] static bool select(const Connection& connection);

    [[nodiscard]] static Event read(const xcb_generic_event_t& event, const Connection& connection);
};

} // namespace tavro::x11
