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

    friend bool operator==(const NoteEvent&, const NoteEvent&) = default;
};

} // namespace tavro
