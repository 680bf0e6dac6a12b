#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tavro {

/// Semitones above a root (0 to 11), as a set of bits.
using IntervalSet = std::uint32_t;

/// A chord's shape and how it is called.
struct ChordPattern {
    /// Must all sound.
    IntervalSet required;
    /// May sound as well.
    IntervalSet optional;
    /// Follows the root's name.
    std::string_view suffix;
    /// What a match scores before bonuses.
    int priority;
    /// Whether further tones are written into the suffix.
    bool allowsExtensionNaming;
};

/// A suffix under way: what it says so far, and the tones that are still to be appended.
struct ChordSuffix {
    std::string_view base;
    IntervalSet addedTones;

    /// Whether the finished suffix will read differently from the pattern's own.
    [[nodiscard]] bool differsFrom(std::string_view patternSuffix) const {
        return addedTones != 0 || base != patternSuffix;
    }
};

/// How the tones that a pattern leaves open are written behind the root's name.
class ChordNaming {
public:
    ChordNaming() = delete;

    /// The suffix for a pattern and the intervals that sound.
    [[nodiscard]] static ChordSuffix suffix(const ChordPattern& pattern, IntervalSet intervals);

    /// The suffix as text. The notes are those that sound; they tell a second from a ninth.
    [[nodiscard]] static std::string text(const ChordSuffix& suffix, std::span<const int> notes,
                                          int rootPitchClass);
};

} // namespace tavro
