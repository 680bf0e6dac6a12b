#pragma once

#include "PerformanceModel/PerformanceState.h"
#include "PerformanceModel/PerformanceStateCoding.h"
#include "PerformanceModel/ScaleEngine.h"

#include <nlohmann/json.hpp>

#include <rapidcheck.h>

#include <cstdint>
#include <limits>
#include <ostream>
#include <string>
#include <vector>

namespace tavro {

/// What a failing test prints.
inline void PrintTo(const PerformanceState& state, std::ostream* stream) {
    *stream << PerformanceStateCoding::encode(state).dump();
}

inline void showValue(const PerformanceState& state, std::ostream& stream) {
    PrintTo(state, &stream);
}

/// Both ends of the range, the surroundings of zero, and anything between.
inline rc::Gen<std::int64_t> anyInteger() {
    using Limits = std::numeric_limits<std::int64_t>;
    return rc::gen::oneOf(
        rc::gen::arbitrary<std::int64_t>(), rc::gen::inRange<std::int64_t>(-200, 200),
        rc::gen::element<std::int64_t>(Limits::min(), Limits::min() + 1, Limits::max() - 1, Limits::max()));
}

inline rc::Gen<std::string> anyScaleName() {
    std::vector<std::string> names{"major", "", "Klingon"};
    for (const auto& scale : ScaleEngine::scales()) {
        names.emplace_back(scale.name);
    }
    return rc::gen::elementOf(names);
}

inline rc::Gen<PerformanceState> stateWith(const rc::Gen<std::int64_t>& root,
                                           const rc::Gen<std::int64_t>& base,
                                           const rc::Gen<std::int64_t>& octaves,
                                           const rc::Gen<std::int64_t>& complexity,
                                           const rc::Gen<std::int64_t>& others) {
    using State = PerformanceState;
    return rc::gen::build<State>(
        rc::gen::set(&State::rootSemitone, root), rc::gen::set(&State::scaleName, anyScaleName()),
        rc::gen::set(&State::baseMidiC, base), rc::gen::set(&State::globalOctaveOffset, octaves),
        rc::gen::set(&State::velocity, others), rc::gen::set(&State::humanizeVelocity, others),
        rc::gen::set(&State::strumMilliseconds, others), rc::gen::set(&State::voicingComplexity, complexity),
        rc::gen::set(&State::maxChordNotes, others), rc::gen::set(&State::midiChannel, others),
        rc::gen::set(&State::chordMode, rc::gen::elementOf(allChordModes)), rc::gen::set(&State::holdMode),
        rc::gen::set(&State::smartHoldMode), rc::gen::set(&State::bassNoteEnabled),
        rc::gen::set(&State::bassOctaveDown, others), rc::gen::set(&State::splitModeEnabled),
        rc::gen::set(&State::melodyOctaveOffset, octaves),
        rc::gen::set(&State::keyboardLayout, rc::gen::elementOf(allKeyboardLayoutKinds)));
}

/// A state with any number in every field that takes one.
inline rc::Gen<PerformanceState> wildState() {
    return stateWith(anyInteger(), anyInteger(), anyInteger(), anyInteger(), anyInteger());
}

/// A state as the controls make it, and somewhat beyond.
inline rc::Gen<PerformanceState> playableState() {
    return stateWith(rc::gen::inRange<std::int64_t>(-13, 25), rc::gen::inRange<std::int64_t>(0, 128),
                     rc::gen::inRange<std::int64_t>(-4, 5), rc::gen::inRange<std::int64_t>(-5, 106),
                     rc::gen::inRange<std::int64_t>(-2, 18));
}

} // namespace tavro
