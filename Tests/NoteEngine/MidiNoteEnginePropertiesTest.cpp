#include "NoteEngine/MidiNoteEngine.h"

#include "PerformanceModel/ArbitraryPerformanceState.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <map>
#include <utility>
#include <vector>

namespace tavro {
namespace {

enum class Action { press, release, panic };

struct Step {
    Action action;
    Character key;
};

void showValue(const Step& step, std::ostream& stream) {
    stream << (step.action == Action::press     ? "press "
               : step.action == Action::release ? "release "
                                                : "panic ")
           << toUtf8(step.key);
}

/// Few keys, so that sequences press and release the same ones: of every row, and one outside.
rc::Gen<Step> anyStep() {
    return rc::gen::construct<Step>(
        rc::gen::weightedElement<Action>({{6, Action::press}, {4, Action::release}, {1, Action::panic}}),
        rc::gen::element(U'a', U's', U'd', U'A', U'x', U'c', U'q', U'w', U'1', U' '));
}

/// Notes that sound on the receiving side, and how many times each.
using Sounding = std::map<std::int64_t, int>;

class Receiver {
public:
    void receive(const std::vector<NoteEvent>& events) {
        for (const auto& event : events) {
            const bool isOn = event.type == NoteEvent::EventType::noteOn;
            RC_ASSERT(event.note >= 0);
            RC_ASSERT(event.note <= 127);
            RC_ASSERT(event.channel >= 1);
            RC_ASSERT(event.channel <= 16);
            RC_ASSERT(event.velocity >= (isOn ? 1 : 0));
            RC_ASSERT(event.velocity <= (isOn ? 127 : 0));
            RC_ASSERT(event.sourceKey == lowercased(event.sourceKey));
            sounding_[event.note] += isOn ? 1 : -1;
            RC_ASSERT(sounding_[event.note] >= 0);
        }
    }

    [[nodiscard]] Sounding sounding() const {
        Sounding positive;
        for (const auto& [note, count] : sounding_) {
            if (count > 0) {
                positive[note] = count;
            }
        }
        return positive;
    }

private:
    Sounding sounding_;
};

Sounding believed(const MidiNoteEngine& engine) {
    Sounding sounding;
    for (const auto& [key, notes] : engine.activeNotesByKey()) {
        for (const auto note : notes) {
            ++sounding[note];
        }
    }
    if (engine.currentBassNote()) {
        ++sounding[*engine.currentBassNote()];
    }
    return sounding;
}

void take(MidiNoteEngine& engine, Receiver& receiver, const Step& step, const PerformanceState& state) {
    switch (step.action) {
    case Action::press:
        receiver.receive(engine.keyDown(step.key, state));
        break;
    case Action::release:
        receiver.receive(engine.keyUp(step.key, state));
        break;
    case Action::panic:
        receiver.receive(engine.panic(state.midiChannel));
        RC_ASSERT(receiver.sounding().empty());
        break;
    }
    RC_ASSERT(receiver.sounding() == believed(engine));
}

RC_GTEST_PROP(MidiNoteEngineProperties, EventsBalanceToWhatTheEngineBelieves, ()) {
    const auto state = *playableState();
    MidiNoteEngine engine(KeyboardLayout::of(state.keyboardLayout));
    Receiver receiver;
    for (const auto& step : *rc::gen::container<std::vector<Step>>(anyStep())) {
        take(engine, receiver, step, state);
    }
    take(engine, receiver, {Action::panic, noKey}, state);
    RC_ASSERT(believed(engine).empty());
}

RC_GTEST_PROP(MidiNoteEngineProperties, EventsBalanceWhileTheSettingsChange, ()) {
    const auto states = *rc::gen::container<std::vector<PerformanceState>>(3, playableState());
    MidiNoteEngine engine(KeyboardLayout::scaleRowsQWERTZ());
    Receiver receiver;
    const auto steps = *rc::gen::container<std::vector<std::pair<Step, std::size_t>>>(
        rc::gen::pair(anyStep(), rc::gen::inRange<std::size_t>(0, states.size())));
    for (const auto& [step, stateIndex] : steps) {
        take(engine, receiver, step, states[stateIndex]);
    }
    take(engine, receiver, {Action::panic, noKey}, states.front());
    RC_ASSERT(believed(engine).empty());
}

RC_GTEST_PROP(MidiNoteEngineProperties, EventsAreInRangeAndBalanceAtAnyNumbers, ()) {
    const auto state = *wildState();
    MidiNoteEngine engine(KeyboardLayout::of(state.keyboardLayout));
    Receiver receiver;
    for (const auto& step : *rc::gen::container<std::vector<Step>>(anyStep())) {
        take(engine, receiver, step, state);
    }
    take(engine, receiver, {Action::panic, noKey}, state);
    RC_ASSERT(believed(engine).empty());
}

} // namespace
} // namespace tavro
