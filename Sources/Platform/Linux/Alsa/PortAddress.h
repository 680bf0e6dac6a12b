#pragma once

#include "PlatformInterfaces/MidiSystem.h"

#include <compare>
#include <cstdint>

namespace tavro::alsa {

/// Where a port stands in the sequencer.
struct PortAddress {
    std::uint8_t client = 0;
    std::uint8_t port = 0;

    /// The two numbers in one; 0 only for the sequencer's own first port.
    [[nodiscard]] constexpr MidiObjectRef number() const {
        return static_cast<MidiObjectRef>(client) << 8U | port;
    }

    friend auto operator<=>(const PortAddress&, const PortAddress&) = default;
};

} // namespace tavro::alsa
