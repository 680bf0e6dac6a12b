#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tavro {

/// A scale by name. The tables live as long as the program, so a definition may be copied freely.
struct ScaleDefinition {
    /// Shown in the picker, and the scale's identity.
    std::string_view name;
    /// Semitones above the root: ascending from 0, all below 12; 5 to 12 of them.
    std::span<const int> intervals;

    friend bool operator==(const ScaleDefinition& left, const ScaleDefinition& right);
};

/// The scales that the keyboard plays, and the names of notes.
class ScaleEngine {
public:
    ScaleEngine() = delete;

    /// The thirteen scales in the order of the picker; "Chromatic" is the first.
    [[nodiscard]] static std::span<const ScaleDefinition> scales();

    /// The scale of exactly this name, else "Chromatic".
    [[nodiscard]] static const ScaleDefinition& scale(std::string_view named);

    /// 0 (C) to 11 (B), for any number.
    [[nodiscard]] static constexpr int pitchClass(std::int64_t midiNote) {
        return static_cast<int>(((midiNote % 12) + 12) % 12);
    }

    /// Name with octave, 60 being "C4"; notes outside 0 to 127 are named like the nearest inside.
    [[nodiscard]] static std::string noteName(std::int64_t midiNote, bool preferFlats);

    /// Name without octave; notes outside 0 to 127 are named like the nearest inside.
    [[nodiscard]] static std::string_view pitchName(std::int64_t midiNote, bool preferFlats);

    /// Whether names in this key are spelled with flats. Any root is taken modulo 12.
    [[nodiscard]] static bool preferFlats(std::int64_t rootSemitone, std::string_view scaleName);
};

} // namespace tavro
