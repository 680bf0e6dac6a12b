#include "NoteEngine/NaiveKeyNotes.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>

namespace tavro::naive {

namespace {

// Wide enough for sums and products of any settings.
__extension__ using Wide = __int128;

const std::map<std::string, std::vector<int>> otherScales{
    {"Major", {0, 2, 4, 5, 7, 9, 11}},          {"Natural Minor", {0, 2, 3, 5, 7, 8, 10}},
    {"Harmonic Minor", {0, 2, 3, 5, 7, 8, 11}}, {"Melodic Minor", {0, 2, 3, 5, 7, 9, 11}},
    {"Dorian", {0, 2, 3, 5, 7, 9, 10}},         {"Phrygian", {0, 1, 3, 5, 7, 8, 10}},
    {"Lydian", {0, 2, 4, 6, 7, 9, 11}},         {"Mixolydian", {0, 2, 4, 5, 7, 9, 10}},
    {"Locrian", {0, 1, 3, 5, 6, 8, 10}},        {"Major Pentatonic", {0, 2, 4, 7, 9}},
    {"Minor Pentatonic", {0, 3, 5, 7, 10}},     {"Blues Minor", {0, 3, 5, 6, 7, 10}},
};

int clampedNote(Wide note) {
    return note < 0 ? 0 : note > 127 ? 127 : static_cast<int>(note);
}

int degreeNote(const KeyPosition& position, std::int64_t degree, const PerformanceState& state,
               std::int64_t melodyOctaves) {
    std::vector<int> intervals{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
    if (const auto found = otherScales.find(state.scaleName); found != otherScales.end()) {
        intervals = found->second;
    }
    Wide note = state.baseMidiC;
    note += state.rootSemitone;
    note += Wide{12} * position.rowOctaveOffset;
    note += Wide{12} * state.globalOctaveOffset;
    note += Wide{12} * melodyOctaves;
    std::size_t index = 0;
    for (std::int64_t step = 0; step < degree; ++step) {
        if (++index == intervals.size()) {
            index = 0;
            note += 12;
        }
    }
    return clampedNote(note + intervals[index]);
}

} // namespace

std::vector<int> stackedNotes(Character key, const PerformanceState& state, const KeyboardLayout& layout,
                              int count) {
    std::vector<int> notes;
    const auto& position = *layout.position(key);
    for (int tone = 0; tone < count; ++tone) {
        notes.push_back(degreeNote(position, position.indexInRow + 2 * tone, state, 0));
    }
    return notes;
}

std::vector<int> trimmed(std::vector<int> notes, std::int64_t keeping) {
    if (keeping < 1) {
        return {};
    }
    std::sort(notes.begin(), notes.end());
    while (static_cast<std::int64_t>(notes.size()) > keeping) {
        if (notes.size() >= 3) {
            notes.erase(notes.begin() + 1);
        } else {
            notes.pop_back();
        }
    }
    return notes;
}

std::vector<int> limited(const std::vector<int>& notes, const PerformanceState& state) {
    if (state.maxChordNotes < 1) {
        return notes;
    }
    std::int64_t limit = state.maxChordNotes > 16 ? 16 : state.maxChordNotes;
    if (state.bassNoteEnabled && state.maxChordNotes != 1) {
        limit -= 1;
    }
    if (limit == 0) {
        limit = 1;
    }
    return limit >= static_cast<std::int64_t>(notes.size()) ? notes : trimmed(notes, limit);
}

std::vector<int> keyNotes(Character key, const PerformanceState& state, const KeyboardLayout& layout) {
    const auto* position = layout.position(key);
    if (position == nullptr) {
        return {};
    }
    if (state.splitModeEnabled && position->rowIndex >= 2) {
        return {degreeNote(*position, position->indexInRow, state, state.melodyOctaveOffset)};
    }
    if (state.chordMode == ChordMode::off) {
        return {degreeNote(*position, position->indexInRow, state, 0)};
    }
    int count = state.chordMode == ChordMode::triad     ? 3
                : state.chordMode == ChordMode::seventh ? 4
                : state.chordMode == ChordMode::ninth   ? 5
                                                        : 6;
    const auto complexity = state.voicingComplexity;
    count = complexity >= 65 ? std::max(count, 4) : count;
    count = complexity >= 80 ? std::max(count, 5) : count;
    count = complexity >= 94 ? 6 : count;
    const auto tones = stackedNotes(key, state, layout, count);
    const auto octaveUp = [&](std::size_t tone) { return clampedNote(Wide{tones[tone]} + 12); };
    std::set<int> voiced;
    if (complexity < 20) {
        voiced.insert(tones.begin(), tones.end());
    } else if (complexity < 40) {
        voiced.insert(tones.begin() + 1, tones.end());
        voiced.insert(octaveUp(0));
    } else if (complexity < 65) {
        voiced = {tones[0], octaveUp(1)};
    } else if (complexity < 82) {
        voiced = {tones[0], tones[2], tones[3], octaveUp(1)};
    } else if (complexity < 94) {
        voiced = {tones[0], tones[3], tones[4], octaveUp(1)};
    } else {
        voiced = {tones[0], tones[3], tones[4], octaveUp(1), tones[5]};
    }
    return limited({voiced.begin(), voiced.end()}, state);
}

} // namespace tavro::naive
