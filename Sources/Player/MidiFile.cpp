#include "Player/MidiFile.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tavro {

namespace {

using Bytes = std::vector<std::uint8_t>;

void append(Bytes& bytes, std::string_view text) {
    bytes.insert(bytes.end(), text.begin(), text.end());
}

void appendBigEndian(Bytes& bytes, std::uint32_t value, int size) {
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
    }
}

/// Seven bits a byte, the highest first; every byte but the last carries a mark.
void appendVariableLength(Bytes& bytes, std::uint32_t value) {
    std::array<std::uint8_t, 5> groups{};
    std::size_t count = 0;
    do {
        groups[count] = static_cast<std::uint8_t>((value & 0x7F) | (count == 0 ? 0 : 0x80));
        value >>= 7;
        ++count;
    } while (value != 0);
    std::reverse_copy(groups.begin(), groups.begin() + static_cast<std::ptrdiff_t>(count),
                      std::back_inserter(bytes));
}

} // namespace

void MidiFile::add(std::chrono::milliseconds time, std::span<const std::uint8_t> message) {
    // The format's longest wait between two events; a longer silence is cut to it.
    constexpr std::int64_t longestWait = 0x0FFFFFFF;
    const auto wait = std::clamp<std::int64_t>((time - lastTime_).count(), 0, longestWait);
    appendVariableLength(track_, static_cast<std::uint32_t>(wait));
    track_.insert(track_.end(), message.begin(), message.end());
    lastTime_ = time;
}

std::vector<std::uint8_t> MidiFile::bytes() const {
    constexpr std::uint32_t ticksPerQuarter = 500;
    constexpr std::uint32_t microsecondsPerQuarter = 500'000;
    constexpr std::uint8_t metaEvent = 0xFF;
    Bytes track{0, metaEvent, 0x51, 3};
    appendBigEndian(track, microsecondsPerQuarter, 3);
    track.insert(track.end(), track_.begin(), track_.end());
    track.insert(track.end(), {0, metaEvent, 0x2F, 0});

    Bytes file;
    append(file, "MThd");
    appendBigEndian(file, 6, 4);
    appendBigEndian(file, 0, 2);
    appendBigEndian(file, 1, 2);
    appendBigEndian(file, ticksPerQuarter, 2);
    append(file, "MTrk");
    appendBigEndian(file, static_cast<std::uint32_t>(track.size()), 4);
    file.insert(file.end(), track.begin(), track.end());
    return file;
}

} // namespace tavro
