#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <vector>

namespace tavro {

/// A recording as a Standard MIDI File of type 0, one tick being one millisecond.
class MidiFile {
public:
    /// Adds one channel message. Times must not go backwards.
    void add(std::chrono::milliseconds time, std::span<const std::uint8_t> message);

    /// The bytes of the file: one track, ended at the last message.
    [[nodiscard]] std::vector<std::uint8_t> bytes() const;

private:
    std::vector<std::uint8_t> track_;
    std::chrono::milliseconds lastTime_{0};
};

} // namespace tavro
