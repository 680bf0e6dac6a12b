#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tavro {

/// The 32 messages that silence a receiver whatever it sounds: All Notes Off and All Sound Off on each of the
/// sixteen channels, in this order.
[[nodiscard]] constexpr std::array<std::array<std::uint8_t, 3>, 32> panicMessages() {
    constexpr std::uint8_t controlChange = 0xB0;
    constexpr std::uint8_t allNotesOff = 123;
    constexpr std::uint8_t allSoundOff = 120;
    std::array<std::array<std::uint8_t, 3>, 32> messages{};
    for (std::size_t channel = 0; channel < 16; ++channel) {
        const auto status = static_cast<std::uint8_t>(controlChange | channel);
        messages[2 * channel] = {status, allNotesOff, 0};
        messages[2 * channel + 1] = {status, allSoundOff, 0};
    }
    return messages;
}

} // namespace tavro
