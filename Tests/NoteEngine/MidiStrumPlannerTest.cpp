#include "NoteEngine/MidiStrumPlanner.h"

#include "PerformanceModel/ArbitraryPerformanceState.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

namespace tavro {

void showValue(const NoteEvent& event, std::ostream& stream) {
    stream << (event.type == NoteEvent::EventType::noteOn ? "on " : "off ") << event.note << " key "
           << static_cast<std::uint32_t>(event.sourceKey);
}

namespace {

using Delays = std::vector<std::int64_t>;
using Events = std::vector<NoteEvent>;

NoteEvent on(std::int64_t note, Character key = U'a') {
    return {NoteEvent::EventType::noteOn, note, 100, 1, key};
}

NoteEvent off(std::int64_t note, Character key = U'a') {
    return {NoteEvent::EventType::noteOff, note, 0, 1, key};
}

Delays delaysOf(const Events& events, std::int64_t strum) {
    Delays delays;
    for (const auto& planned : MidiStrumPlanner::plan(events, strum)) {
        delays.push_back(planned.delayMilliseconds);
    }
    return delays;
}

struct PlanCase {
    const char* name;
    Events events;
    Delays upward;
    Delays downward;
};

class StrumPlan : public testing::TestWithParam<PlanCase> {};

TEST_P(StrumPlan, DelaysUpwardAndDownward) {
    EXPECT_EQ(delaysOf(GetParam().events, 30), GetParam().upward);
    EXPECT_EQ(delaysOf(GetParam().events, -30), GetParam().downward);
}

TEST_P(StrumPlan, WithoutStrumDelaysNothing) {
    EXPECT_EQ(delaysOf(GetParam().events, 0), Delays(GetParam().events.size(), 0));
}

TEST_P(StrumPlan, KeepsTheEventsAndTheirOrder) {
    const auto plan = MidiStrumPlanner::plan(GetParam().events, -30);
    ASSERT_EQ(plan.size(), GetParam().events.size());
    for (std::size_t index = 0; index < plan.size(); ++index) {
        EXPECT_EQ(plan[index].event, GetParam().events[index]);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Batches, StrumPlan,
    testing::Values(
        PlanCase{"Nothing", {}, {}, {}}, PlanCase{"OneNote", {on(60)}, {0}, {0}},
        PlanCase{"Chord", {on(60), on(64), on(67)}, {0, 30, 60}, {60, 30, 0}},
        PlanCase{"ChordFromHighToLow", {on(67), on(64), on(60)}, {0, 30, 60}, {60, 30, 0}},
        PlanCase{"BassFirst", {on(36), on(60), on(64), on(67)}, {0, 0, 30, 60}, {0, 60, 30, 0}},
        PlanCase{"BassLast", {on(60), on(64), on(67), on(36)}, {0, 30, 60, 0}, {60, 30, 0, 0}},
        PlanCase{"BassAnOctaveBelow", {on(48), on(60)}, {0, 0}, {0, 0}},
        PlanCase{"ElevenSemitonesAreNoBass", {on(49), on(60)}, {0, 30}, {30, 0}},
        PlanCase{"TheLowestNoteTwiceIsNoBass", {on(48), on(48), on(67)}, {0, 30, 60}, {60, 30, 0}},
        PlanCase{"TwoKeys",
                 {on(60, U'a'), on(62, U's'), on(64, U'a'), on(65, U's'), on(67, U'a')},
                 {0, 0, 30, 30, 60},
                 {60, 30, 30, 0, 0}},
        PlanCase{"BassOfOneKeyOnly",
                 {on(60, U'a'), on(64, U'a'), on(40, U's'), on(62, U's'), on(65, U's')},
                 {0, 30, 0, 0, 30},
                 {30, 0, 0, 30, 0}},
        PlanCase{"NoteOffsAreNoSteps",
                 {off(60), off(64), on(60), off(20), on(64), on(67)},
                 {0, 0, 0, 0, 30, 60},
                 {0, 0, 60, 0, 30, 0}},
        PlanCase{"WithoutAKey", {on(60, noKey), on(64, noKey), on(67, noKey)}, {0, 0, 0}, {0, 0, 0}},
        PlanCase{"WithAndWithoutAKey",
                 {off(48, noKey), on(60), on(30, noKey), on(64)},
                 {0, 0, 0, 30},
                 {0, 30, 0, 0}}),
    [](const auto& test) { return test.param.name; });

struct ClampCase {
    std::int64_t strum;
    std::int64_t actsAs;
};

class StrumClamp : public testing::TestWithParam<ClampCase> {};

TEST_P(StrumClamp, IsFiftyMillisecondsEitherWay) {
    const Events chord{on(60), on(64), on(67)};
    EXPECT_EQ(MidiStrumPlanner::plan(chord, GetParam().strum),
              MidiStrumPlanner::plan(chord, GetParam().actsAs));
}

INSTANTIATE_TEST_SUITE_P(Values, StrumClamp,
                         testing::Values(ClampCase{120, 50}, ClampCase{51, 50}, ClampCase{-80, -50},
                                         ClampCase{-51, -50},
                                         ClampCase{std::numeric_limits<std::int64_t>::max(), 50},
                                         ClampCase{std::numeric_limits<std::int64_t>::min(), -50}));

TEST(StrumClampEnds, AreInside) {
    EXPECT_EQ(delaysOf({on(60), on(64), on(67)}, 50), (Delays{0, 50, 100}));
    EXPECT_EQ(delaysOf({on(60), on(64), on(67)}, -50), (Delays{100, 50, 0}));
    EXPECT_EQ(delaysOf({on(60), on(64), on(67)}, 1), (Delays{0, 1, 2}));
    EXPECT_EQ(delaysOf({on(60), on(64), on(67)}, -1), (Delays{2, 1, 0}));
}

TEST(PlannedMidiEvent, IsEqualWhenEventAndDelayAre) {
    EXPECT_EQ((PlannedMidiEvent{on(60), 5}), (PlannedMidiEvent{on(60), 5}));
    EXPECT_NE((PlannedMidiEvent{on(60), 5}), (PlannedMidiEvent{on(60), 6}));
    EXPECT_NE((PlannedMidiEvent{on(60), 5}), (PlannedMidiEvent{on(61), 5}));
}

rc::Gen<NoteEvent> anyEvent() {
    return rc::gen::construct<NoteEvent>(
        rc::gen::element(NoteEvent::EventType::noteOn, NoteEvent::EventType::noteOn,
                         NoteEvent::EventType::noteOff),
        rc::gen::inRange<std::int64_t>(0, 128), rc::gen::just<std::int64_t>(100),
        rc::gen::inRange<std::int64_t>(1, 17), rc::gen::element(U'a', U's', noKey));
}

RC_GTEST_PROP(StrumPlanProperties, EveryEventIsPlannedOnceInOrderWithinTheLongestStrum, ()) {
    const auto events = *rc::gen::container<Events>(anyEvent());
    const auto plan = MidiStrumPlanner::plan(events, *anyInteger());
    RC_ASSERT(plan.size() == events.size());
    for (std::size_t index = 0; index < plan.size(); ++index) {
        RC_ASSERT(plan[index].event == events[index]);
        RC_ASSERT(plan[index].delayMilliseconds >= 0);
        RC_ASSERT(plan[index].delayMilliseconds <= 50 * static_cast<std::int64_t>(events.size()));
        if (events[index].type == NoteEvent::EventType::noteOff || events[index].sourceKey == noKey) {
            RC_ASSERT(plan[index].delayMilliseconds == 0);
        }
    }
}

RC_GTEST_PROP(StrumPlanProperties, NotesOfOneKeyAreOneStepApart, ()) {
    const auto strum = *rc::gen::inRange<std::int64_t>(1, 51);
    // Within an octave no note is a bass note.
    const auto notes = *rc::gen::nonEmpty(
        rc::gen::container<std::vector<std::int64_t>>(rc::gen::inRange<std::int64_t>(60, 72)));
    Events events;
    Delays upward;
    for (const auto note : notes) {
        upward.push_back(strum * static_cast<std::int64_t>(events.size()));
        events.push_back(on(note));
    }
    const Delays downward(upward.rbegin(), upward.rend());
    RC_ASSERT(delaysOf(events, strum) == upward);
    RC_ASSERT(delaysOf(events, -strum) == downward);
}

} // namespace
} // namespace tavro
