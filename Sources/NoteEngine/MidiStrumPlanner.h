#pragma once

#include "PerformanceModel/NoteEvent.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tavro {

/// An event and how many milliseconds after its batch it is due: 0 or more, 0 for every note-off.
struct PlannedMidiEvent {
    NoteEvent event;
    std::int64_t delayMilliseconds;

    friend bool operator==(const PlannedMidiEvent&, const PlannedMidiEvent&) = default;
};

/// Spreads the notes of a chord like a strum.
class MidiStrumPlanner {
public:
    MidiStrumPlanner() = delete;

    /// One entry per event, in order. The strum is used within -50 to 50 ms; negative is downward. The
    /// notes of each source key are strummed on their own; a lowest note that lies an octave or more below
    /// the next sounds at once, and so does everything without a source key.
    [[nodiscard]] static std::vector<PlannedMidiEvent> plan(std::span<const NoteEvent> events,
                                                            std::int64_t strumMilliseconds);
};

} // namespace tavro
