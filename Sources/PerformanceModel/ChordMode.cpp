#include "PerformanceModel/ChordMode.h"

#include <algorithm>

namespace tavro {

std::string_view rawValue(ChordMode mode) {
    switch (mode) {
    case ChordMode::off:
        return "Off";
    case ChordMode::triad:
        return "Triad";
    case ChordMode::seventh:
        return "Seventh";
    case ChordMode::ninth:
        return "Ninth";
    case ChordMode::eleventh:
        return "Eleventh";
    }
    return {};
}

std::optional<ChordMode> chordModeFromRawValue(std::string_view text) {
    const auto found = std::ranges::find(allChordModes, text, [](ChordMode mode) { return rawValue(mode); });
    return found == allChordModes.end() ? std::nullopt : std::optional(*found);
}

int stackedTones(ChordMode mode) {
    return mode == ChordMode::off ? 0 : static_cast<int>(mode) + 2;
}

ChordMode chordModeForComplexity(std::int64_t complexity) {
    if (complexity < 65) {
        return ChordMode::triad;
    }
    if (complexity < 80) {
        return ChordMode::seventh;
    }
    return complexity < 94 ? ChordMode::ninth : ChordMode::eleventh;
}

} // namespace tavro
