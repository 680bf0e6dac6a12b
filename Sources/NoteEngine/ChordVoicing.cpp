#include "NoteEngine/ChordVoicing.h"

#include "NoteEngine/ChordDetector.h"

#include <algorithm>
#include <limits>

namespace tavro {

namespace {

constexpr int semitonesPerOctave = 12;

int clampedNote(std::int64_t note) {
    return static_cast<int>(std::clamp<std::int64_t>(note, 0, 127));
}

/// Settings come from files and may hold any number. Within these bounds every sum of a few of them is exact;
/// beyond them a note is still in range, and no musician will miss the exact sum.
std::int64_t bounded(std::int64_t value) {
    constexpr std::int64_t bound = std::int64_t{1} << 40;
    return std::clamp(value, -bound, bound);
}

const ChordTone* firstTone(std::span<const ChordTone> tones, ChordToneRole role) {
    const auto found = std::ranges::find(tones, role, &ChordTone::role);
    return found == tones.end() ? nullptr : &*found;
}

int anOctaveUp(const ChordTone& tone) {
    return clampedNote(tone.note + semitonesPerOctave);
}

void append(Notes& notes, const ChordTone* tone) {
    if (tone != nullptr) {
        notes.push_back(tone->note);
    }
}

void appendAnOctaveUp(Notes& notes, const ChordTone* tone) {
    if (tone != nullptr) {
        notes.push_back(anOctaveUp(*tone));
    }
}

Notes stackingOrder(std::span<const ChordTone> tones) {
    Notes notes;
    notes.reserve(tones.size());
    for (const auto& tone : tones) {
        notes.push_back(tone.note);
    }
    return notes;
}

Notes voiced(std::span<const ChordTone> tones, std::int64_t complexity) {
    // These bands are not those by which the complexity control chooses the chord mode: between 80 and 81 a
    // ninth chord is voiced as an open seventh, on purpose.
    if (complexity < 20) {
        return stackingOrder(tones);
    }
    if (complexity < 40) {
        return ChordVoicing::firstInversion(tones);
    }
    if (complexity < 65) {
        return ChordVoicing::tenthVoicing(tones);
    }
    if (complexity < 82) {
        return ChordVoicing::openSeventhVoicing(tones);
    }
    return ChordVoicing::upperColorVoicing(tones, complexity >= 94);
}

Notes chordNotes(const KeyPosition& position, const PerformanceState& state, const ScaleDefinition& scale) {
    Notes baseNotes;
    for (int tone = 0; tone < stackedTones(state.chordMode); ++tone) {
        baseNotes.push_back(ChordVoicing::scaleNote(position, position.indexInRow + 2 * tone, state, scale));
    }
    const auto complexity = std::clamp<std::int64_t>(state.voicingComplexity, 0, 100);
    const auto tones = ChordVoicing::chordTones(baseNotes, complexity, position, state, scale);
    auto notes = tones.size() >= 3 ? voiced(tones, complexity) : std::move(baseNotes);
    std::ranges::sort(notes);
    const auto duplicates = std::ranges::unique(notes);
    notes.erase(duplicates.begin(), duplicates.end());
    return ChordVoicing::limitedChordNotes(std::move(notes), state);
}

/// Uniform in 0 to `highest`. Draws that would favour the low numbers are thrown away.
std::uint32_t uniformDraw(std::uint32_t highest, const RandomSource& random) {
    const std::uint64_t count = std::uint64_t{highest} + 1;
    const std::uint64_t range = std::uint64_t{std::numeric_limits<std::uint32_t>::max()} + 1;
    const std::uint64_t fair = range - range % count;
    std::uint64_t draw = random();
    while (draw >= fair) {
        draw = random();
    }
    return static_cast<std::uint32_t>(draw % count);
}

} // namespace

int ChordVoicing::scaleNote(const KeyPosition& position, std::int64_t degree, const PerformanceState& state,
                            const ScaleDefinition& scale, std::int64_t melodyOctaves) {
    if (scale.intervals.empty()) {
        return clampedNote(state.baseMidiC);
    }
    const auto length = static_cast<std::int64_t>(scale.intervals.size());
    auto octave = degree / length;
    auto index = degree % length;
    if (index < 0) {
        index += length;
        --octave;
    }
    const auto octaves = bounded(position.rowOctaveOffset) + bounded(octave) +
                         bounded(state.globalOctaveOffset) + bounded(melodyOctaves);
    return clampedNote(bounded(state.baseMidiC) + bounded(state.rootSemitone) +
                       scale.intervals[static_cast<std::size_t>(index)] + semitonesPerOctave * octaves);
}

int ChordVoicing::singleNote(const KeyPosition& position, const PerformanceState& state,
                             const ScaleDefinition& scale) {
    const auto melodyOctaves =
        isMelodyPosition(position, state.splitModeEnabled) ? state.melodyOctaveOffset : 0;
    return scaleNote(position, position.indexInRow, state, scale, melodyOctaves);
}

Notes ChordVoicing::notesForPosition(const KeyPosition& position, const PerformanceState& state) {
    const auto& scale = ScaleEngine::scale(state.scaleName);
    if (state.chordMode == ChordMode::off || isMelodyPosition(position, state.splitModeEnabled)) {
        return {singleNote(position, state, scale)};
    }
    return chordNotes(position, state, scale);
}

std::vector<ChordTone> ChordVoicing::chordTones(std::span<const int> baseNotes, std::int64_t complexity,
                                                const KeyPosition& position, const PerformanceState& state,
                                                const ScaleDefinition& scale) {
    auto count = std::clamp<std::size_t>(baseNotes.size(), 1, 6);
    if (complexity >= 94) {
        count = 6;
    } else if (complexity >= 80) {
        count = std::max<std::size_t>(count, 5);
    } else if (complexity >= 65) {
        count = std::max<std::size_t>(count, 4);
    }
    std::vector<ChordTone> tones;
    tones.reserve(count);
    for (int tone = 0; tone < static_cast<int>(count); ++tone) {
        tones.push_back({static_cast<ChordToneRole>(tone),
                         scaleNote(position, position.indexInRow + 2 * tone, state, scale)});
    }
    return tones;
}

Notes ChordVoicing::firstInversion(std::span<const ChordTone> tones) {
    Notes notes;
    for (const auto& tone : tones) {
        notes.push_back(tone.role == ChordToneRole::root ? anOctaveUp(tone) : tone.note);
    }
    return notes;
}

Notes ChordVoicing::tenthVoicing(std::span<const ChordTone> tones) {
    const auto* root = firstTone(tones, ChordToneRole::root);
    const auto* third = firstTone(tones, ChordToneRole::third);
    if (root == nullptr || third == nullptr) {
        return openVoicing(tones);
    }
    return {root->note, anOctaveUp(*third)};
}

Notes ChordVoicing::openSeventhVoicing(std::span<const ChordTone> tones) {
    Notes notes;
    append(notes, firstTone(tones, ChordToneRole::root));
    append(notes, firstTone(tones, ChordToneRole::fifth));
    append(notes, firstTone(tones, ChordToneRole::seventh));
    appendAnOctaveUp(notes, firstTone(tones, ChordToneRole::third));
    return notes.empty() ? openVoicing(tones) : notes;
}

Notes ChordVoicing::upperColorVoicing(std::span<const ChordTone> tones, bool includesEleventh) {
    Notes notes;
    append(notes, firstTone(tones, ChordToneRole::root));
    append(notes, firstTone(tones, ChordToneRole::seventh));
    append(notes, firstTone(tones, ChordToneRole::ninth));
    appendAnOctaveUp(notes, firstTone(tones, ChordToneRole::third));
    if (includesEleventh) {
        append(notes, firstTone(tones, ChordToneRole::eleventh));
    }
    return notes.empty() ? openVoicing(tones) : notes;
}

Notes ChordVoicing::openVoicing(std::span<const ChordTone> tones) {
    Notes notes;
    for (const auto& tone : tones) {
        const bool isRaised = tone.role == ChordToneRole::third || tone.role == ChordToneRole::ninth ||
                              tone.role == ChordToneRole::eleventh;
        notes.push_back(isRaised ? anOctaveUp(tone) : tone.note);
    }
    return notes;
}

Notes ChordVoicing::limitedChordNotes(Notes notes, const PerformanceState& state) {
    if (state.maxChordNotes < 1) {
        return notes;
    }
    auto limit = std::min<std::int64_t>(state.maxChordNotes, 16);
    if (state.bassNoteEnabled && limit > 1) {
        --limit;
    }
    if (limit >= static_cast<std::int64_t>(notes.size())) {
        return notes;
    }
    return musicallyTrimmed(std::move(notes), limit);
}

Notes ChordVoicing::musicallyTrimmed(Notes notes, std::int64_t keeping) {
    if (keeping < 1) {
        return {};
    }
    std::ranges::sort(notes);
    while (static_cast<std::int64_t>(notes.size()) > keeping) {
        notes.erase(notes.size() >= 3 ? notes.begin() + 1 : notes.end() - 1);
    }
    return notes;
}

std::optional<int> ChordVoicing::bassNote(std::span<const int> notes, const PerformanceState& state) {
    const auto root = ChordDetector::rootPitchClass(notes);
    if (!root) {
        return std::nullopt;
    }
    const auto lowest = std::ranges::min(notes);
    auto bass = lowest < *root ? *root : lowest - (lowest - *root) % semitonesPerOctave;
    bass -= state.bassOctaveDown <= 1 ? semitonesPerOctave : 2 * semitonesPerOctave;
    while (bass < 0) {
        bass += semitonesPerOctave;
    }
    return std::min(bass, 127);
}

int ChordVoicing::humanizedVelocity(const PerformanceState& state, const RandomSource& random) {
    const auto base = static_cast<int>(std::clamp<std::int64_t>(state.velocity, 1, 127));
    if (state.humanizeVelocity < 1) {
        return base;
    }
    const auto width = static_cast<int>(std::min<std::int64_t>(state.humanizeVelocity, 30));
    const auto draw = static_cast<int>(uniformDraw(static_cast<std::uint32_t>(2 * width), random));
    return std::clamp(base + draw - width, 1, 127);
}

std::vector<NoteEvent> ChordVoicing::noteOnEvents(std::span<const int> notes, const PerformanceState& state,
                                                  Character key, const RandomSource& random) {
    std::vector<NoteEvent> events;
    events.reserve(notes.size());
    for (const auto note : notes) {
        events.push_back({NoteEvent::EventType::noteOn, note, humanizedVelocity(state, random),
                          clampedChannel(state.midiChannel), key});
    }
    return events;
}

std::int64_t clampedChannel(std::int64_t channel) {
    return std::clamp<std::int64_t>(channel, 1, 16);
}

} // namespace tavro
