#pragma once

#include <optional>
#include <span>
#include <string>

namespace tavro {

/// The chord that a set of notes was recognised as.
struct ChordMatch {
    /// Root and suffix, such as "Cmaj7".
    std::string name;
    /// 0 (C) to 11 (B).
    int rootPitchClass;
    /// How well it fits; only good for comparing.
    int score;

    friend bool operator==(const ChordMatch&, const ChordMatch&) = default;
};

/// Names the chord that sounds. Pure; notes may come in any order and more than once.
class ChordDetector {
public:
    ChordDetector() = delete;

    /// "-" for no notes; the note's name with its octave for a single note number and without for one pitch
    /// class in several octaves; the chord's name; "Unknown" for anything else.
    [[nodiscard]] static std::string displayName(std::span<const int> notes, bool preferFlats);

    /// The best match. Notes of a single pitch class match with that class as the root. Nothing for no notes
    /// and for what no pattern fits.
    [[nodiscard]] static std::optional<ChordMatch> detect(std::span<const int> midiNotes,
                                                          bool preferFlats = false);

    /// The same without the name, for who needs only the root.
    [[nodiscard]] static std::optional<int> rootPitchClass(std::span<const int> midiNotes);
};

} // namespace tavro
