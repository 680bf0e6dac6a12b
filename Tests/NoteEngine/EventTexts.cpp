#include "NoteEngine/EventTexts.h"

namespace tavro {

std::vector<std::string> texts(const std::vector<NoteEvent>& events) {
    std::vector<std::string> result;
    for (const auto& event : events) {
        const bool isOn = event.type == NoteEvent::EventType::noteOn;
        auto text = (isOn ? "on " : "off ") + std::to_string(event.note) + " " +
                    (event.sourceKey == noKey ? "-" : toUtf8(event.sourceKey));
        if (event.velocity != (isOn ? 100 : 0)) {
            text += " velocity " + std::to_string(event.velocity);
        }
        if (event.channel != 1) {
            text += " channel " + std::to_string(event.channel);
        }
        result.push_back(text);
    }
    return result;
}

PerformanceState plainTriads() {
    PerformanceState state;
    state.scaleName = "Major";
    state.humanizeVelocity = 0;
    state.maxChordNotes = 0;
    state.chordMode = ChordMode::triad;
    return state;
}

PerformanceState plainNotes() {
    auto state = plainTriads();
    state.chordMode = ChordMode::off;
    return state;
}

} // namespace tavro
