#include "KeyboardMapping/KeyboardLayout.h"
#include "NoteEngine/ChordDetector.h"
#include "NoteEngine/MidiNoteEngine.h"

#include <iostream>
#include <vector>

// Plays one chord; the status is 0 when it sounds as it should and ends when it should.
int main() {
    tavro::PerformanceState state;
    state.scaleName = "Major";
    state.chordMode = tavro::ChordMode::triad;

    tavro::MidiNoteEngine engine(tavro::KeyboardLayout::of(state.keyboardLayout));
    std::vector<std::int64_t> notes;
    for (const auto& event : engine.keyDown(U'a', state)) {
        notes.push_back(event.note);
    }
    const auto chord = tavro::ChordDetector::displayName(engine.activeChordNotes(state), false);
    const auto releases = engine.keyUp(U'a', state).size();

    std::cout << chord << ": " << notes.size() << " notes, " << releases << " releases\n";
    const bool isRight = notes == std::vector<std::int64_t>{60, 64, 67} && chord == "C" && releases == 3;
    return isRight ? 0 : 1;
}
