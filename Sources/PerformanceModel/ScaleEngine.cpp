#include "PerformanceModel/ScaleEngine.h"

#include <algorithm>
#include <array>

namespace tavro {

namespace {

constexpr std::array chromatic{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
constexpr std::array major{0, 2, 4, 5, 7, 9, 11};
constexpr std::array naturalMinor{0, 2, 3, 5, 7, 8, 10};
constexpr std::array harmonicMinor{0, 2, 3, 5, 7, 8, 11};
constexpr std::array melodicMinor{0, 2, 3, 5, 7, 9, 11};
constexpr std::array dorian{0, 2, 3, 5, 7, 9, 10};
constexpr std::array phrygian{0, 1, 3, 5, 7, 8, 10};
constexpr std::array lydian{0, 2, 4, 6, 7, 9, 11};
constexpr std::array mixolydian{0, 2, 4, 5, 7, 9, 10};
constexpr std::array locrian{0, 1, 3, 5, 6, 8, 10};
constexpr std::array majorPentatonic{0, 2, 4, 7, 9};
constexpr std::array minorPentatonic{0, 3, 5, 7, 10};
constexpr std::array bluesMinor{0, 3, 5, 6, 7, 10};

constexpr std::array<ScaleDefinition, 13> scaleTable{{
    {"Chromatic", chromatic},
    {"Major", major},
    {"Natural Minor", naturalMinor},
    {"Harmonic Minor", harmonicMinor},
    {"Melodic Minor", melodicMinor},
    {"Dorian", dorian},
    {"Phrygian", phrygian},
    {"Lydian", lydian},
    {"Mixolydian", mixolydian},
    {"Locrian", locrian},
    {"Major Pentatonic", majorPentatonic},
    {"Minor Pentatonic", minorPentatonic},
    {"Blues Minor", bluesMinor},
}};

constexpr std::array<std::string_view, 8> minorTypeScales{
    "Natural Minor", "Harmonic Minor", "Melodic Minor",    "Dorian",
    "Phrygian",      "Locrian",        "Minor Pentatonic", "Blues Minor"};

constexpr std::array<std::string_view, 12> sharpNames{"C",  "C#", "D",  "D#", "E",  "F",
                                                      "F#", "G",  "G#", "A",  "A#", "B"};
constexpr std::array<std::string_view, 12> flatNames{"C",  "Db", "D",  "Eb", "E",  "F",
                                                     "Gb", "G",  "Ab", "A",  "Bb", "B"};

constexpr std::size_t midiNoteWithin(std::int64_t midiNote) {
    return static_cast<std::size_t>(std::clamp<std::int64_t>(midiNote, 0, 127));
}

} // namespace

bool operator==(const ScaleDefinition& left, const ScaleDefinition& right) {
    return left.name == right.name && std::ranges::equal(left.intervals, right.intervals);
}

std::span<const ScaleDefinition> ScaleEngine::scales() {
    return scaleTable;
}

const ScaleDefinition& ScaleEngine::scale(std::string_view named) {
    const auto found = std::ranges::find(scaleTable, named, &ScaleDefinition::name);
    return found == scaleTable.end() ? scaleTable.front() : *found;
}

std::string ScaleEngine::noteName(std::int64_t midiNote, bool preferFlats) {
    const auto octave = static_cast<int>(midiNoteWithin(midiNote) / 12) - 1;
    return std::string(pitchName(midiNote, preferFlats)) + std::to_string(octave);
}

std::string_view ScaleEngine::pitchName(std::int64_t midiNote, bool preferFlats) {
    return (preferFlats ? flatNames : sharpNames)[midiNoteWithin(midiNote) % 12];
}

bool ScaleEngine::preferFlats(std::int64_t rootSemitone, std::string_view scaleName) {
    const auto root = pitchClass(rootSemitone);
    if (std::ranges::find(minorTypeScales, scaleName) != minorTypeScales.end()) {
        return root != 1 && root != 4 && root != 6 && root != 11;
    }
    // Mixolydian always reads with flats: its seventh is a lowered one on every root.
    if (scaleName == "Mixolydian") {
        return true;
    }
    return root == 1 || root == 3 || root == 5 || root == 6 || root == 8 || root == 10;
}

} // namespace tavro
