#include "NoteEngine/ChordVoicing.h"

#include "PerformanceModel/ArbitraryPerformanceState.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <limits>
#include <map>
#include <random>
#include <set>

namespace tavro {
namespace {

RandomSource seededSource(std::uint32_t seed = 1) {
    return [engine = std::mt19937(seed)]() mutable { return static_cast<std::uint32_t>(engine()); };
}

PerformanceState withVelocity(std::int64_t velocity, std::int64_t humanize) {
    PerformanceState state;
    state.velocity = velocity;
    state.humanizeVelocity = humanize;
    return state;
}

/// How often each velocity comes in so many draws.
std::map<int, int> drawn(const PerformanceState& state, int draws) {
    const auto source = seededSource();
    std::map<int, int> counts;
    for (int draw = 0; draw < draws; ++draw) {
        ++counts[ChordVoicing::humanizedVelocity(state, source)];
    }
    return counts;
}

struct ExactCase {
    std::int64_t velocity;
    std::int64_t humanize;
    int result;
};

class VelocityWithoutHumanizing : public testing::TestWithParam<ExactCase> {};

TEST_P(VelocityWithoutHumanizing, IsTheVelocityWithinItsRange) {
    const RandomSource mustNotBeAsked = []() -> std::uint32_t {
        ADD_FAILURE() << "a random number was drawn";
        return 0;
    };
    EXPECT_EQ(ChordVoicing::humanizedVelocity(withVelocity(GetParam().velocity, GetParam().humanize),
                                              mustNotBeAsked),
              GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(Values, VelocityWithoutHumanizing,
                         testing::Values(ExactCase{100, 0, 100}, ExactCase{1, 0, 1}, ExactCase{127, 0, 127},
                                         ExactCase{0, 0, 1}, ExactCase{-5, 0, 1}, ExactCase{128, 0, 127},
                                         ExactCase{300, -1, 127},
                                         ExactCase{64, std::numeric_limits<std::int64_t>::min(), 64},
                                         ExactCase{std::numeric_limits<std::int64_t>::max(), 0, 127},
                                         ExactCase{std::numeric_limits<std::int64_t>::min(), 0, 1}));

struct SpreadCase {
    std::int64_t velocity;
    std::int64_t humanize;
    int lowest;
    int highest;
};

class HumanizedVelocity : public testing::TestWithParam<SpreadCase> {};

TEST_P(HumanizedVelocity, TakesEveryValueWithinItsWidthAndNoOther) {
    const auto counts = drawn(withVelocity(GetParam().velocity, GetParam().humanize), 20000);
    EXPECT_EQ(counts.begin()->first, GetParam().lowest);
    EXPECT_EQ(counts.rbegin()->first, GetParam().highest);
    EXPECT_EQ(counts.size(), static_cast<std::size_t>(GetParam().highest - GetParam().lowest + 1));
}

INSTANTIATE_TEST_SUITE_P(Widths, HumanizedVelocity,
                         testing::Values(SpreadCase{100, 1, 99, 101}, SpreadCase{100, 7, 93, 107},
                                         SpreadCase{64, 30, 34, 94}, SpreadCase{64, 31, 34, 94},
                                         SpreadCase{64, 100, 34, 94},
                                         SpreadCase{64, std::numeric_limits<std::int64_t>::max(), 34, 94},
                                         SpreadCase{127, 7, 120, 127}, SpreadCase{300, 7, 120, 127},
                                         SpreadCase{1, 7, 1, 8}, SpreadCase{0, 7, 1, 8},
                                         SpreadCase{-50, 7, 1, 8}));

TEST(HumanizedVelocityDistribution, IsEven) {
    // The generator is seeded, so the counts are the same in every run; 5 deviations either way.
    const auto counts = drawn(withVelocity(64, 30), 61000);
    for (const auto& [velocity, count] : counts) {
        EXPECT_NEAR(count, 1000, 160) << velocity;
    }
}

TEST(NoteOnEvents, HaveTheNotesInOrderWithChannelAndKey) {
    auto state = withVelocity(90, 0);
    state.midiChannel = 5;
    const auto events = ChordVoicing::noteOnEvents(Notes{67, 60, 64}, state, U'k', seededSource());
    EXPECT_EQ(events, (std::vector<NoteEvent>{{NoteEvent::EventType::noteOn, 67, 90, 5, U'k'},
                                              {NoteEvent::EventType::noteOn, 60, 90, 5, U'k'},
                                              {NoteEvent::EventType::noteOn, 64, 90, 5, U'k'}}));
    EXPECT_TRUE(ChordVoicing::noteOnEvents({}, state, U'k', seededSource()).empty());
}

TEST(NoteOnEvents, DrawAVelocityForEachNote) {
    const Notes notes(50, 60);
    std::set<std::int64_t> velocities;
    for (const auto& event : ChordVoicing::noteOnEvents(notes, withVelocity(64, 30), U'a', seededSource())) {
        velocities.insert(event.velocity);
    }
    EXPECT_GT(velocities.size(), 10U);
}

TEST(SystemRandomSource, GivesDifferentNumbers) {
    const auto source = systemRandomSource();
    std::set<std::uint32_t> numbers;
    for (int draw = 0; draw < 100; ++draw) {
        numbers.insert(source());
    }
    EXPECT_GT(numbers.size(), 90U);
}

struct ChannelCase {
    std::int64_t channel;
    std::int64_t clamped;
};

class Channel : public testing::TestWithParam<ChannelCase> {};

TEST_P(Channel, IsClampedToOneToSixteen) {
    EXPECT_EQ(clampedChannel(GetParam().channel), GetParam().clamped);
}

INSTANTIATE_TEST_SUITE_P(Values, Channel,
                         testing::Values(ChannelCase{1, 1}, ChannelCase{16, 16}, ChannelCase{0, 1},
                                         ChannelCase{-1, 1}, ChannelCase{17, 16},
                                         ChannelCase{std::numeric_limits<std::int64_t>::min(), 1},
                                         ChannelCase{std::numeric_limits<std::int64_t>::max(), 16}));

RC_GTEST_PROP(VelocityProperties, AnyStateGivesVelocitiesAndChannelsInRange, (std::uint32_t seed)) {
    const auto state = *wildState();
    const auto events = ChordVoicing::noteOnEvents(Notes{0, 60, 127}, state, U'a', seededSource(seed));
    for (const auto& event : events) {
        RC_ASSERT(event.velocity >= 1);
        RC_ASSERT(event.velocity <= 127);
        RC_ASSERT(event.channel >= 1);
        RC_ASSERT(event.channel <= 16);
    }
}

} // namespace
} // namespace tavro
