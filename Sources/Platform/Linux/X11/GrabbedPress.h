#pragma once

#include <cstdint>

namespace tavro::x11 {

/// A press at which the keyboard has stopped and waits for an answer.
struct GrabbedPress {
    enum class Protocol { input2, core };

    std::uint8_t key = 0;
    /// The bits of X.
    std::uint32_t modifierBits = 0;
    bool isRepeat = false;
    /// How it came, and in which way it is answered.
    Protocol protocol = Protocol::input2;
    /// Milliseconds of the server's clock.
    std::uint32_t time = 0;
};

} // namespace tavro::x11
