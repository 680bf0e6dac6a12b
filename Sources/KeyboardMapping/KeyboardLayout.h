#pragma once

#include "PerformanceModel/Character.h"
#include "PerformanceModel/KeyboardLayoutKind.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace tavro {

/// One physical row of playable keys.
struct KeyboardRow {
    /// Left to right.
    std::u32string keys;
    /// Octaves above the performance's base octave.
    std::int64_t octaveOffset;
    /// The leftmost key in upper case; the row's identity.
    std::string label;

    friend bool operator==(const KeyboardRow&, const KeyboardRow&) = default;
};

/// Where one key sits.
struct KeyPosition {
    /// Lower case; the position's identity.
    Character key;
    /// Index into the layout's rows; 0 is the bottom row.
    std::int64_t rowIndex;
    /// Counted from 0 at the left.
    std::int64_t indexInRow;
    /// The row's octave offset.
    std::int64_t rowOctaveOffset;

    friend bool operator==(const KeyPosition&, const KeyPosition&) = default;
};

/// What a key plays, for display: chords or single melody notes.
enum class KeyPerformanceZone { chord, melody };

/// The playable keys in their rows, bottom row first.
class KeyboardLayout {
public:
    /// A key that stands twice is found at its later place (higher row, or further right).
    explicit KeyboardLayout(std::vector<KeyboardRow> rows);

    [[nodiscard]] const std::vector<KeyboardRow>& rows() const { return rows_; }

    [[nodiscard]] const std::unordered_map<Character, KeyPosition>& positions() const { return positions_; }

    /// Where the key sits, upper and lower case alike; null when it is not in the layout. The pointer is
    /// good for the life of the layout.
    [[nodiscard]] const KeyPosition* position(Character key) const;

    /// Whether Split Mode makes this key play single melody notes: a key of the two upper rows while it is
    /// on. A key that is not in the layout never does.
    [[nodiscard]] bool isMelodyKey(Character key, bool splitModeEnabled) const;

    /// The same as a zone.
    [[nodiscard]] KeyPerformanceZone zone(Character key, bool splitModeEnabled) const;

    /// The US layout. Built once; lives as long as the program.
    [[nodiscard]] static const KeyboardLayout& scaleRowsQWERTY();

    /// The German layout. Built once; lives as long as the program.
    [[nodiscard]] static const KeyboardLayout& scaleRowsQWERTZ();

    [[nodiscard]] static const KeyboardLayout& of(KeyboardLayoutKind kind);

    friend bool operator==(const KeyboardLayout&, const KeyboardLayout&) = default;

private:
    std::vector<KeyboardRow> rows_;
    std::unordered_map<Character, KeyPosition> positions_;
};

/// The row rule of Split Mode, for a key whose position is at hand.
[[nodiscard]] inline bool isMelodyPosition(const KeyPosition& position, bool splitModeEnabled) {
    return splitModeEnabled && position.rowIndex > 1;
}

} // namespace tavro
