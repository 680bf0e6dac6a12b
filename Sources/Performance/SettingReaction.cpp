#include "Performance/SettingReaction.h"

namespace tavro {

SettingReaction reactionTo(const PerformanceState& previous, const PerformanceState& current) {
    const auto differs = [&](auto... members) { return (... || (previous.*members != current.*members)); };
    using State = PerformanceState;
    if (differs(&State::rootSemitone, &State::scaleName, &State::globalOctaveOffset,
                &State::voicingComplexity, &State::chordMode, &State::maxChordNotes, &State::splitModeEnabled,
                &State::melodyOctaveOffset, &State::midiChannel, &State::keyboardLayout)) {
        return SettingReaction::rebuild;
    }
    if (differs(&State::holdMode, &State::smartHoldMode)) {
        return SettingReaction::silence;
    }
    return SettingReaction::none;
}

} // namespace tavro
