#include "NoteEngine/MidiNoteEngine.h"

#include "NoteEngine/NaiveKeyNotes.h"
#include "PerformanceModel/ArbitraryPerformanceState.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstdint>
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

RC_GTEST_PROP(NotesForKeyProperties, EveryKeyPlaysWhatTheRulesSayAtLargeNumbers, ()) {
    constexpr std::int64_t large = std::int64_t{1} << 40;
    // Half of the sums are brought back near the keyboard, where not only the clamping shows.
    const auto octaves = *rc::gen::inRange<std::int64_t>(-large / 12, large / 12);
    const auto nearBase = rc::gen::map(rc::gen::inRange<std::int64_t>(-100, 200),
                                       [octaves](std::int64_t note) { return note - 12 * octaves; });
    const auto any = rc::gen::inRange<std::int64_t>(-large, large);
    expectTheRulesOnEveryKey(*stateWith(rc::gen::inRange<std::int64_t>(-100, 100),
                                        rc::gen::oneOf(nearBase, any), rc::gen::just(octaves), any,
                                        rc::gen::oneOf(any, rc::gen::inRange<std::int64_t>(-2, 18))));
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
