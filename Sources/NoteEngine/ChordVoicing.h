#pragma once

#include "KeyboardMapping/KeyboardLayout.h"
#include "NoteEngine/RandomSource.h"
#include "PerformanceModel/NoteEvent.h"
#include "PerformanceModel/PerformanceState.h"
#include "PerformanceModel/ScaleEngine.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace tavro {

/// The role of a tone in a chord of stacked thirds, in stacking order.
enum class ChordToneRole { root, third, fifth, seventh, ninth, eleventh };

struct ChordTone {
    ChordToneRole role;
    /// MIDI note number, 0 to 127.
    int note;

    friend bool operator==(const ChordTone&, const ChordTone&) = default;
};

/// MIDI note numbers, 0 to 127.
using Notes = std::vector<int>;

/// From one key to the notes that it plays. Pure functions; every note they give lies in 0 to 127.
class ChordVoicing {
public:
    ChordVoicing() = delete;

    /// The note of a scale degree counted from the row's first key; `melodyOctaves` is added to the octaves.
    [[nodiscard]] static int scaleNote(const KeyPosition& position, std::int64_t degree,
                                       const PerformanceState& state, const ScaleDefinition& scale,
                                       std::int64_t melodyOctaves = 0);

    /// The one note of a key when chords are off, in its zone: with the melody octaves for a melody key.
    [[nodiscard]] static int singleNote(const KeyPosition& position, const PerformanceState& state,
                                        const ScaleDefinition& scale);

    /// What the key plays now: one note, or its chord, ascending, voiced and limited.
    [[nodiscard]] static Notes notesForPosition(const KeyPosition& position, const PerformanceState& state);

    /// The tones of the key's chord in stacking order. `baseNotes` gives their count, 1 to 6, which a high
    /// complexity raises.
    [[nodiscard]] static std::vector<ChordTone>
    chordTones(std::span<const int> baseNotes, std::int64_t complexity, const KeyPosition& position,
               const PerformanceState& state, const ScaleDefinition& scale);

    /// All tones, the root an octave up.
    [[nodiscard]] static Notes firstInversion(std::span<const ChordTone> tones);
    /// The root, and the third an octave up.
    [[nodiscard]] static Notes tenthVoicing(std::span<const ChordTone> tones);
    /// Root, fifth, seventh, and the third an octave up.
    [[nodiscard]] static Notes openSeventhVoicing(std::span<const ChordTone> tones);
    /// Root, seventh, ninth, the third an octave up, and the eleventh if wanted; never the fifth.
    [[nodiscard]] static Notes upperColorVoicing(std::span<const ChordTone> tones, bool includesEleventh);
    /// All tones; third, ninth and eleventh an octave up. Where the other voicings find nothing to voice.
    [[nodiscard]] static Notes openVoicing(std::span<const ChordTone> tones);

    /// The notes trimmed to the note limit, with one place kept free for the bass note.
    [[nodiscard]] static Notes limitedChordNotes(Notes notes, const PerformanceState& state);

    /// The lowest note and the top of the chord survive longest. Ascending.
    [[nodiscard]] static Notes musicallyTrimmed(Notes notes, std::int64_t keeping);

    /// The chord's root, one or two octaves below its highest place under the notes; nothing when the notes
    /// make no chord that has a name.
    [[nodiscard]] static std::optional<int> bassNote(std::span<const int> notes,
                                                     const PerformanceState& state);

    /// The state's velocity, varied at random: 1 to 127.
    [[nodiscard]] static int humanizedVelocity(const PerformanceState& state, const RandomSource& random);

    /// One note-on for each note, in order, each with a velocity of its own.
    [[nodiscard]] static std::vector<NoteEvent> noteOnEvents(std::span<const int> notes,
                                                             const PerformanceState& state, Character key,
                                                             const RandomSource& random);
};

/// A channel as the user counts it, clamped to 1 to 16.
[[nodiscard]] std::int64_t clampedChannel(std::int64_t channel);

} // namespace tavro
