#include "Player/ObservedMidiSystem.h"

#include "Platform/Headless/MidiSystemAdapter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

namespace tavro {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using Bytes = std::vector<std::uint8_t>;

constexpr std::array<std::uint8_t, 3> noteOn{144, 60, 100};
constexpr std::array<std::uint8_t, 3> noteOff{128, 60, 0};

class ObservedSystem : public testing::Test {
protected:
    ObservedSystem() {
        observed.onMessage = [this](auto message) { seen.emplace_back(message.begin(), message.end()); };
    }

    static Bytes bytes(std::span<const std::uint8_t> message) { return {message.begin(), message.end()}; }

    headless::MidiSystemAdapter system;
    ObservedMidiSystem observed{system};
    std::vector<Bytes> seen;
};

TEST_F(ObservedSystem, passesOnWhatItIsAsked) {
    system.destinations = {{.reference = 9, .displayName = "Shown", .name = "Plain"}};
    system.listenerCount = 4;
    system.dropped = 2;
    int changes = 0;
    EXPECT_EQ(observed.createClient("A", [&] { ++changes; }).reference, 1U);
    EXPECT_EQ(observed.createOutputPort(1, "B").reference, 2U);
    EXPECT_EQ(observed.createSource(1, "C").reference, 3U);
    system.announceChange();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(observed.numberOfDestinations(), 1U);
    EXPECT_EQ(observed.destination(0), 9U);
    EXPECT_EQ(observed.displayName(9), "Shown");
    EXPECT_EQ(observed.name(9), "Plain");
    EXPECT_EQ(observed.listeners(3), 4U);
    EXPECT_EQ(observed.droppedMessages(), 2U);
    observed.prepareRoute(2, 9);
    observed.disposePort(2);
    observed.disposeEndpoint(3);
    observed.disposeClient(1);
    EXPECT_THAT(system.calls, ElementsAre("client A", "port B of 1", "source C of 1", "route 2 to 9",
                                          "dispose port 2", "dispose source 3", "dispose client 1"));
}

TEST_F(ObservedSystem, failuresOfCreationsStayWhatTheyAre) {
    system.clientStatus = -5;
    system.portStatus = -6;
    system.sourceStatus = -7;
    EXPECT_EQ(observed.createClient("A", nullptr).status, -5);
    EXPECT_EQ(observed.createOutputPort(1, "B").status, -6);
    EXPECT_EQ(observed.createSource(1, "C").status, -7);
}

TEST_F(ObservedSystem, tellsWhatIsSentOnEitherRoad) {
    observed.send(2, 9, noteOn);
    observed.received(3, noteOff);
    EXPECT_THAT(seen, ElementsAre(bytes(noteOn), bytes(noteOff)));
    EXPECT_THAT(system.messages, ElementsAre(headless::MidiSystemAdapter::Message{false, 9, bytes(noteOn)},
                                             headless::MidiSystemAdapter::Message{true, 3, bytes(noteOff)}));
}

TEST_F(ObservedSystem, tellsAScheduledMessageWhenItsTimeHasCome) {
    system.schedules = true;
    const auto ticket = observed.schedule(3, 0, noteOn, 20ms);
    ASSERT_TRUE(ticket);
    EXPECT_EQ(system.scheduled.at(*ticket).delay, 20ms);
    observed.received(3, noteOff);
    EXPECT_THAT(seen, ElementsAre(bytes(noteOff)));
    observed.settle(*ticket);
    EXPECT_THAT(seen, ElementsAre(bytes(noteOff), bytes(noteOn)));
    EXPECT_THAT(system.scheduled, IsEmpty());
}

TEST_F(ObservedSystem, tellsACancelledMessageOnlyWhenItWasTooLate) {
    system.schedules = true;
    const auto first = observed.schedule(3, 0, noteOn, 20ms);
    EXPECT_TRUE(observed.cancel(first.value()));
    EXPECT_THAT(seen, IsEmpty());
    const auto second = observed.schedule(3, 0, noteOn, 20ms);
    system.isTooLateToCancel = true;
    EXPECT_FALSE(observed.cancel(second.value()));
    EXPECT_THAT(seen, ElementsAre(bytes(noteOn)));
}

TEST_F(ObservedSystem, handsGesturesOn) {
    system.schedules = true;
    observed.beginGesture();
    observed.received(3, noteOn);
    EXPECT_TRUE(observed.schedule(3, 0, noteOn, 20ms));
    observed.endGesture();
    observed.received(3, noteOn);
    EXPECT_THAT(system.gestures, ElementsAre(std::vector{bytes(noteOn), bytes(noteOn)}));
}

TEST_F(ObservedSystem, handsNothingOverThatMayNotGoAhead) {
    system.schedules = true;
    observed.mayGoAhead = [](auto delay) { return delay <= 10ms; };
    EXPECT_FALSE(observed.schedule(3, 0, noteOn, 11ms));
    EXPECT_TRUE(observed.schedule(3, 0, noteOn, 10ms));
    EXPECT_EQ(system.scheduled.size(), 1U);
}

TEST_F(ObservedSystem, refusalsOfTheSystemAreItsOwn) {
    EXPECT_FALSE(observed.schedule(3, 0, noteOn, 10ms));
}

TEST_F(ObservedSystem, tellsTheLossBeforeTheProgramDealsWithIt) {
    std::vector<std::string> told;
    observed.onLoss = [&] { told.emplace_back("observer"); };
    observed.setLossHandler([&] { told.emplace_back("program"); });
    system.schedules = true;
    const auto ticket = observed.schedule(3, 0, noteOn, 10ms);
    system.loseConnection();
    EXPECT_THAT(told, ElementsAre("observer", "program"));
    observed.settle(ticket.value());
    EXPECT_THAT(seen, IsEmpty()) << "it went with the system";
}

} // namespace
} // namespace tavro
