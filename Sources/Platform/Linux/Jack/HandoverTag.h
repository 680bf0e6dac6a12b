#pragma once

#include <cstdint>

namespace tavro::jack {

/// What `MessageHandover` tells `MessageMerge` with each entry of the ring between them.
struct HandoverTag {
    enum class Kind : std::uint8_t {
        /// Bytes for a port.
        message,
        /// The ticket of the gesture's last scheduled message: the time of all up to it begins to run.
        gestureEnd,
        /// The ticket of a settled message: nothing behind this goes out before it.
        afterSettled
    };

    Kind kind = Kind::message;
    /// Whether it is the first of its gesture.
    bool beginsGesture = true;
    std::uint8_t port = 0;

    [[nodiscard]] static constexpr HandoverTag of(std::uint16_t packed) {
        return {.kind = static_cast<Kind>(packed >> kindShift),
                .beginsGesture = (packed & beginningBit) != 0,
                .port = static_cast<std::uint8_t>(packed & portMask)};
    }

    [[nodiscard]] constexpr std::uint16_t packed() const {
        return static_cast<std::uint16_t>(static_cast<unsigned>(kind) << kindShift |
                                          (beginsGesture ? beginningBit : 0U) | (port & portMask));
    }

private:
    static constexpr unsigned portMask = 0x7F;
    static constexpr unsigned beginningBit = 0x80;
    static constexpr unsigned kindShift = 8;
};

} // namespace tavro::jack
