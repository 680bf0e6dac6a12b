#include "PerformanceModel/PerformanceState.h"

#include "PerformanceModel/ArbitraryPerformanceState.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace tavro {
namespace {

TEST(PerformanceState, StartsWithTheDefaults) {
    const PerformanceState state;
    EXPECT_EQ(state.rootSemitone, 0);
    EXPECT_EQ(state.scaleName, "Chromatic");
    EXPECT_EQ(state.baseMidiC, 60);
    EXPECT_EQ(state.globalOctaveOffset, 0);
    EXPECT_EQ(state.velocity, 100);
    EXPECT_EQ(state.humanizeVelocity, 7);
    EXPECT_EQ(state.strumMilliseconds, 0);
    EXPECT_EQ(state.voicingComplexity, 0);
    EXPECT_EQ(state.maxChordNotes, 8);
    EXPECT_EQ(state.midiChannel, 1);
    EXPECT_EQ(state.chordMode, ChordMode::off);
    EXPECT_FALSE(state.holdMode);
    EXPECT_FALSE(state.smartHoldMode);
    EXPECT_FALSE(state.bassNoteEnabled);
    EXPECT_EQ(state.bassOctaveDown, 1);
    EXPECT_FALSE(state.splitModeEnabled);
    EXPECT_EQ(state.melodyOctaveOffset, 0);
    EXPECT_EQ(state.keyboardLayout, KeyboardLayoutKind::qwertz);
}

struct Change {
    std::string field;
    std::function<void(PerformanceState&)> apply;
};

void PrintTo(const Change& change, std::ostream* stream) {
    *stream << change.field;
}

const std::vector<Change> oneChangeOfEachField{
    {"rootSemitone", [](auto& state) { state.rootSemitone = 1; }},
    {"scaleName", [](auto& state) { state.scaleName = "chromatic"; }},
    {"baseMidiC", [](auto& state) { state.baseMidiC = 61; }},
    {"globalOctaveOffset", [](auto& state) { state.globalOctaveOffset = 1; }},
    {"velocity", [](auto& state) { state.velocity = 101; }},
    {"humanizeVelocity", [](auto& state) { state.humanizeVelocity = 8; }},
    {"strumMilliseconds", [](auto& state) { state.strumMilliseconds = 1; }},
    {"voicingComplexity", [](auto& state) { state.voicingComplexity = 1; }},
    {"maxChordNotes", [](auto& state) { state.maxChordNotes = 9; }},
    {"midiChannel", [](auto& state) { state.midiChannel = 2; }},
    {"chordMode", [](auto& state) { state.chordMode = ChordMode::triad; }},
    {"holdMode", [](auto& state) { state.holdMode = true; }},
    {"smartHoldMode", [](auto& state) { state.smartHoldMode = true; }},
    {"bassNoteEnabled", [](auto& state) { state.bassNoteEnabled = true; }},
    {"bassOctaveDown", [](auto& state) { state.bassOctaveDown = 2; }},
    {"splitModeEnabled", [](auto& state) { state.splitModeEnabled = true; }},
    {"melodyOctaveOffset", [](auto& state) { state.melodyOctaveOffset = -1; }},
    {"keyboardLayout", [](auto& state) { state.keyboardLayout = KeyboardLayoutKind::qwerty; }},
};

TEST(PerformanceState, HasNoFieldWithoutAChangeBelow) {
    EXPECT_EQ(PerformanceStateCoding::encode({}).size(), oneChangeOfEachField.size());
}

class PerformanceStateField : public testing::TestWithParam<Change> {};

TEST_P(PerformanceStateField, CountsInComparisonAndIsReportedAsTheDifference) {
    const PerformanceState before;
    PerformanceState after;
    EXPECT_EQ(before, after);
    GetParam().apply(after);
    EXPECT_NE(before, after);
    EXPECT_EQ(PerformanceStateCoding::differences(before, after),
              std::vector<std::string_view>{GetParam().field});
}

TEST_P(PerformanceStateField, ACopyHasItsOwnValue) {
    const PerformanceState original;
    auto copy = original;
    GetParam().apply(copy);
    EXPECT_EQ(original, PerformanceState());
}

INSTANTIATE_TEST_SUITE_P(EachField, PerformanceStateField, testing::ValuesIn(oneChangeOfEachField),
                         [](const auto& test) { return test.param.field; });

TEST(PerformanceState, DifferencesComeInTheOrderOfTheFields) {
    PerformanceState after;
    for (auto change = oneChangeOfEachField.rbegin(); change != oneChangeOfEachField.rend(); ++change) {
        change->apply(after);
    }
    std::vector<std::string_view> names;
    for (const auto& change : oneChangeOfEachField) {
        names.emplace_back(change.field);
    }
    EXPECT_EQ(PerformanceStateCoding::differences({}, after), names);
    EXPECT_TRUE(PerformanceStateCoding::differences(after, after).empty());
}

} // namespace
} // namespace tavro
