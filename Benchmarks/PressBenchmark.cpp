#include "NoteEngine/ChordDetector.h"
#include "NoteEngine/KeyboardHighlightResolver.h"
#include "NoteEngine/MidiNoteEngine.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <set>
#include <vector>

namespace tavro {
namespace {

PerformanceState largestChords() {
    PerformanceState state;
    state.scaleName = "Major";
    state.chordMode = ChordMode::eleventh;
    state.voicingComplexity = 100;
    state.maxChordNotes = 8;
    return state;
}

std::vector<Character> keysInLayoutOrder(const KeyboardLayout& layout) {
    std::vector<Character> keys;
    for (const auto& row : layout.rows()) {
        keys.insert(keys.end(), row.keys.begin(), row.keys.end());
    }
    return keys;
}

/// Everything that a press costs before its messages go out and its display is up to date: the engine, the
/// keys to light, the name of the chord. The measured press is the one that makes it so many held keys; its
/// release is not measured.
void wholePress(benchmark::State& run, const PerformanceState& state) {
    const auto& layout = KeyboardLayout::of(state.keyboardLayout);
    const auto keys = keysInLayoutOrder(layout);
    const auto heldKeys = static_cast<std::size_t>(run.range(0));
    const auto measuredKey = keys[heldKeys - 1];
    const bool preferFlats = ScaleEngine::preferFlats(state.rootSemitone, state.scaleName);
    MidiNoteEngine engine(layout);
    std::set<Character> active;
    for (std::size_t index = 0; index + 1 < heldKeys; ++index) {
        benchmark::DoNotOptimize(engine.keyDown(keys[index], state));
        active.insert(keys[index]);
    }
    for (auto _ : run) {
        const auto start = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(engine.keyDown(measuredKey, state));
        active.insert(measuredKey);
        benchmark::DoNotOptimize(KeyboardHighlightResolver::highlightedKeys(active, state, layout));
        benchmark::DoNotOptimize(ChordDetector::displayName(engine.activeChordNotes(state), preferFlats));
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        run.SetIterationTime(elapsed.count());
        benchmark::DoNotOptimize(engine.keyUp(measuredKey, state));
        active.erase(measuredKey);
    }
    run.SetComplexityN(run.range(0));
}

void pressOfAChord(benchmark::State& run) {
    wholePress(run, largestChords());
}

void pressOfAChordWithBass(benchmark::State& run) {
    auto state = largestChords();
    state.bassNoteEnabled = true;
    state.maxChordNotes = 0;
    wholePress(run, state);
}

void heldKeyCounts(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(1)->Arg(5)->Arg(20)->Arg(45)->UseManualTime()->Unit(benchmark::kMicrosecond)->Complexity();
}

BENCHMARK(pressOfAChord)->Apply(heldKeyCounts);
BENCHMARK(pressOfAChordWithBass)->Apply(heldKeyCounts);

} // namespace
} // namespace tavro
