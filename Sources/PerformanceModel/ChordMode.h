#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tavro {

/// Whether a key plays a single note (off) or a chord, and how many scale tones the chord stacks.
enum class ChordMode { off, triad, seventh, ninth, eleventh };

/// In the order of the picker.
inline constexpr std::array allChordModes{ChordMode::off, ChordMode::triad, ChordMode::seventh,
                                          ChordMode::ninth, ChordMode::eleventh};

/// The stored and shown name: "Off", "Triad", "Seventh", "Ninth", "Eleventh".
[[nodiscard]] std::string_view rawValue(ChordMode mode);

/// The mode of a stored name, compared exactly; nothing for any other text.
[[nodiscard]] std::optional<ChordMode> chordModeFromRawValue(std::string_view rawValue);

/// How many scale tones are stacked in thirds: 3 to 6, and 0 when off.
[[nodiscard]] int stackedTones(ChordMode mode);

/// The mode that the complexity control chooses: below 65 triad, 65 to 79 seventh, 80 to 93 ninth, from 94
/// on eleventh. Never off. These bands are not those of the voicing.
[[nodiscard]] ChordMode chordModeForComplexity(std::int64_t complexity);

} // namespace tavro
