#pragma once

#include "NoteEngine/MidiNoteEngine.h"

#include <string>
#include <vector>

namespace tavro {

/// Events as short texts: "on 60 a", "off 60 a", "off 48 -" for an event of no key. What is not as usual is
/// added: a velocity other than 100 (0 for a note-off), a channel other than 1.
std::vector<std::string> texts(const std::vector<NoteEvent>& events);

/// C major with triads in close position, velocity 100 without variation, no note limit.
PerformanceState plainTriads();

/// The same with single notes.
PerformanceState plainNotes();

/// An engine with the German layout, and its presses and releases as texts.
class Player {
public:
    PerformanceState state = plainTriads();
    MidiNoteEngine engine{KeyboardLayout::scaleRowsQWERTZ()};

    std::vector<std::string> down(Character key) { return texts(engine.keyDown(key, state)); }

    std::vector<std::string> up(Character key) { return texts(engine.keyUp(key, state)); }

    std::vector<std::string> panic() { return texts(engine.panic(state.midiChannel)); }
};

} // namespace tavro
