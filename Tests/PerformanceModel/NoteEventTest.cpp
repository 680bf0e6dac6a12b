#include "PerformanceModel/NoteEvent.h"

#include <gtest/gtest.h>

namespace tavro {
namespace {

TEST(NoteEvent, IsEqualWhenAllFiveFieldsAre) {
    const NoteEvent event{NoteEvent::EventType::noteOn, 60, 100, 1, U'a'};
    EXPECT_EQ(event, (NoteEvent{NoteEvent::EventType::noteOn, 60, 100, 1, U'a'}));
    EXPECT_NE(event, (NoteEvent{NoteEvent::EventType::noteOff, 60, 100, 1, U'a'}));
    EXPECT_NE(event, (NoteEvent{NoteEvent::EventType::noteOn, 61, 100, 1, U'a'}));
    EXPECT_NE(event, (NoteEvent{NoteEvent::EventType::noteOn, 60, 99, 1, U'a'}));
    EXPECT_NE(event, (NoteEvent{NoteEvent::EventType::noteOn, 60, 100, 2, U'a'}));
    EXPECT_NE(event, (NoteEvent{NoteEvent::EventType::noteOn, 60, 100, 1, noKey}));
}

} // namespace
} // namespace tavro
