#include "NoteEngine/MidiNoteEngine.h"

#include "NoteEngine/NaiveKeyNotes.h"
#include "PerformanceModel/ArbitraryPerformanceState.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <functional>

namespace tavro {
namespace {

void expectTheRulesOnEveryKey(const PerformanceState& state) {
    const auto& layout = KeyboardLayout::of(state.keyboardLayout);
    const MidiNoteEngine engine(layout);
    for (const auto& [key, position] : layout.positions()) {
        RC_ASSERT(engine.notesForKey(key, state) == naive::keyNotes(key, state, layout));
    }
}

RC_GTEST_PROP(NotesForKeyProperties, EveryKeyPlaysWhatTheRulesSay, ()) {
    expectTheRulesOnEveryKey(*playableState());
}

RC_GTEST_PROP(NotesForKeyProperties, EveryKeyPlaysWhatTheRulesSayAtAnyNumbers, ()) {
    expectTheRulesOnEveryKey(*wildState());
}

RC_GTEST_PROP(NotesForKeyProperties, NotesAreInRangeAscendingAndDifferent, ()) {
    const auto state = *wildState();
    const auto& layout = KeyboardLayout::of(state.keyboardLayout);
    const MidiNoteEngine engine(layout);
    for (const auto& [key, position] : layout.positions()) {
        const auto notes = engine.notesForKey(key, state);
        RC_ASSERT(!notes.empty());
        RC_ASSERT(notes.front() >= 0);
        RC_ASSERT(notes.back() <= 127);
        RC_ASSERT(std::ranges::adjacent_find(notes, std::greater_equal()) == notes.end());
    }
}

} // namespace
} // namespace tavro
