#pragma once

#include <cstdint>
#include <deque>

namespace tavro {

/// When one key went down and up lately, in milliseconds of the window system's clock, which may run over.
/// What was told, by whom and in which order does not matter: a press is told from a repeat, and one that is
/// over from one that is not, by the times alone. A time of 0 is none and is left out.
class KeyTimes {
public:
    void addPress(std::uint32_t time);
    void addRelease(std::uint32_t time);

    /// Whether what comes from the keyboard at this time is a press of its own: the key has come up since the
    /// last press before it, or none is known.
    [[nodiscard]] bool startsPress(std::uint32_t time) const;

    /// Whether the key went up at a time that lies behind the first, or is the same, and before the second.
    [[nodiscard]] bool wentUpBetween(std::uint32_t time, std::uint32_t later) const;

    /// Whether what went down at this time has come up.
    [[nodiscard]] bool isOver(std::uint32_t time) const;

    /// More than half of the clock's range between the two means that it has run over.
    [[nodiscard]] static bool isLater(std::uint32_t time, std::uint32_t other);

private:
    std::deque<std::uint32_t> presses_;
    std::deque<std::uint32_t> releases_;
};

} // namespace tavro
