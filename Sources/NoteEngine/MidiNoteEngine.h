#pragma once

#include "KeyboardMapping/KeyboardLayout.h"
#include "NoteEngine/ChordVoicing.h"
#include "NoteEngine/RandomSource.h"
#include "PerformanceModel/NoteEvent.h"
#include "PerformanceModel/PerformanceState.h"

#include <map>
#include <optional>
#include <set>
#include <vector>

namespace tavro {

/// Turns presses and releases of keys into note events, and remembers what each key has sounded. Every
/// operation returns its events in the order in which they must be sent. Does no MIDI itself, has no lock:
/// one thread.
class MidiNoteEngine {
public:
    using NotesByKey = std::map<Character, Notes>;

    explicit MidiNoteEngine(const KeyboardLayout& layout, RandomSource random = systemRandomSource());

    /// A press. Keys outside the layout, and keys that are held already, give no events.
    [[nodiscard]] std::vector<NoteEvent> keyDown(Character key, const PerformanceState& state);

    /// A release. While plain Hold is on, the caller keeps back the releases of chord keys.
    [[nodiscard]] std::vector<NoteEvent> keyUp(Character key, const PerformanceState& state);

    /// Note-offs for everything that sounds; afterwards nothing is remembered.
    [[nodiscard]] std::vector<NoteEvent> panic(std::int64_t channel);

    /// The notes that the key would play now; empty for a key outside the layout.
    [[nodiscard]] Notes notesForKey(Character key, const PerformanceState& state) const;

    /// The notes of all active chord keys, ascending, duplicates kept.
    [[nodiscard]] Notes activeChordNotes(const PerformanceState& state) const;

    /// The notes of the keys that are physically held with Smart Hold on, ascending, duplicates kept.
    [[nodiscard]] Notes smartInputNotes() const;

    [[nodiscard]] const KeyboardLayout& layout() const { return layout_; }

    /// The notes that each key has turned on and not off again. A key is active while it stands here.
    [[nodiscard]] const NotesByKey& activeNotesByKey() const { return activeNotesByKey_; }

    /// The bass note that sounds.
    [[nodiscard]] std::optional<int> currentBassNote() const {
        return bass_ ? std::optional(bass_->note) : std::nullopt;
    }

private:
    using Events = std::vector<NoteEvent>;

    struct BassNote {
        int note;
        /// The key whose press brought it; none when that key plays the same note itself, since then nobody
        /// can tell the two apart.
        Character startedBy;
    };

    [[nodiscard]] bool isActiveChordKey(Character key, const PerformanceState& state) const;
    void pressWithSmartHold(Events& events, Character key, Notes notes, const PerformanceState& state);
    void sound(Events& events, Character key, Notes notes, const PerformanceState& state);
    void releaseActiveChordNotes(Events& events, const PerformanceState& state);
    void bassNoteRefreshEvents(Events& events, const PerformanceState& state, Character key,
                               const Notes& notes);
    void releaseBassNote(Events& events, std::int64_t channel, Character key);

    KeyboardLayout layout_;
    RandomSource random_;
    NotesByKey activeNotesByKey_;
    std::set<Character> smartPhysicalKeysDown_;
    std::optional<BassNote> bass_;
};

} // namespace tavro
