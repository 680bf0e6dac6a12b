#pragma once

#include "PerformanceModel/Character.h"

#include <cstdint>

namespace tavro {

/// One note-on or note-off between the note engine and the MIDI output.
struct NoteEvent {
    enum class EventType { noteOn, noteOff };

    EventType type;
    /// MIDI note number; the engine makes 0 to 127.
    std::int64_t note;
    /// 1 to 127 for a note-on, 0 for a note-off, as the engine makes them.
    std::int64_t velocity;
    /// As the user counts it: 1 to 16.
    std::int64_t channel;
    /// The lower-case key that caused the event; `noKey` when none did.
    Character sourceKey;
    /// For a note-off: the key whose note-on it ends, where that may be another than the source key. The
    /// bass note begins with one key's press and may end with another's; while a strum still holds its
    /// note-on back, only this finds it.
    Character startedBy = noKey;

    /// By what the event says; `startedBy` is no part of that.
    friend bool operator==(const NoteEvent& left, const NoteEvent& right) {
        return left.type == right.type && left.note == right.note && left.velocity == right.velocity &&
               left.channel == right.channel && left.sourceKey == right.sourceKey;
    }
};

} // namespace tavro
