#pragma once

#include <chrono>
#include <cstdint>
#include <ostream>
#include <span>
#include <string>
#include <vector>

namespace tavro {

/// The controller's read-outs at one moment.
struct ReadOuts {
    std::string chord;
    /// Keys in layout order: bottom row first, left to right.
    std::vector<std::string> pressed;
    std::vector<std::string> lit;
    std::string status;
};

/// Where the player's events are written.
class PlayerOutput {
public:
    PlayerOutput() = default;
    PlayerOutput(const PlayerOutput&) = delete;
    PlayerOutput& operator=(const PlayerOutput&) = delete;
    virtual ~PlayerOutput() = default;

    /// One MIDI message, at this time from the start.
    virtual void midi(std::chrono::milliseconds time, std::span<const std::uint8_t> message) = 0;
    virtual void show(std::chrono::milliseconds time, const ReadOuts& readOuts) = 0;
};

/// A line for people: time, bytes, words.
class TextOutput final : public PlayerOutput {
public:
    explicit TextOutput(std::ostream& stream) : stream_(stream) {}

    void midi(std::chrono::milliseconds time, std::span<const std::uint8_t> message) override;
    void show(std::chrono::milliseconds time, const ReadOuts& readOuts) override;

private:
    std::ostream& stream_;
};

/// A JSON object a line.
class JsonLinesOutput final : public PlayerOutput {
public:
    explicit JsonLinesOutput(std::ostream& stream) : stream_(stream) {}

    void midi(std::chrono::milliseconds time, std::span<const std::uint8_t> message) override;
    void show(std::chrono::milliseconds time, const ReadOuts& readOuts) override;

private:
    std::ostream& stream_;
};

} // namespace tavro
