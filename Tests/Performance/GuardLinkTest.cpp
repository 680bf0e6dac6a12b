#include "Performance/GuardLink.h"

#include "Concurrency/VirtualMainActor.h"
#include "Platform/Headless/GuardAdapter.h"
#include "Platform/Headless/MidiSystemAdapter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace tavro {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class GuardLinkTest : public testing::Test {
protected:
    GuardLinkTest() {
        link->onDeeds = [this](const Guard::Deeds& deeds) { told.push_back(deeds); };
    }

    void pass(std::chrono::nanoseconds time) { mainActor.runUntil(mainActor.now() + time); }

    VirtualMainActor mainActor;
    headless::MidiSystemAdapter system;
    MidiOutputManager midi{system, mainActor};
    headless::GuardAdapter guard;
    std::vector<Guard::Deeds> told;
    std::optional<GuardLink> link{std::in_place, guard, mainActor, midi};
};

TEST_F(GuardLinkTest, ReceiversAreEntrustedAtOnceAndWhenTheyChange) {
    EXPECT_THAT(guard.receivers, IsEmpty());
    system.receiverNames = {"jack synth:in"};
    system.announceChange();
    mainActor.runDue();
    EXPECT_THAT(guard.receivers, ElementsAre("jack synth:in"));
    system.receiverNames = {"jack other:in"};
    midi.setSelectedDestinationID(7);
    EXPECT_THAT(guard.receivers, ElementsAre("jack other:in"));
}

TEST_F(GuardLinkTest, AtRestNothingWakesTheProgram) {
    pass(10s);
    EXPECT_FALSE(guard.expectsBeats);
    EXPECT_EQ(guard.beats, 0);
}

TEST_F(GuardLinkTest, WhileBusyItBeats) {
    link->setBusy(true);
    EXPECT_TRUE(guard.expectsBeats);
    EXPECT_EQ(guard.beats, 1);
    pass(10 * Guard::beatInterval);
    EXPECT_EQ(guard.beats, 11);
    link->setBusy(true);
    EXPECT_EQ(guard.beats, 11);
    link->setBusy(false);
    EXPECT_FALSE(guard.expectsBeats);
    pass(10s);
    EXPECT_EQ(guard.beats, 11);
}

TEST_F(GuardLinkTest, ATurnThatComesBeforeTheTimersIsABeat) {
    std::vector<int> beats;
    const auto turn = mainActor.after(Guard::beatInterval, [&] {
        link->showLife();
        beats.push_back(guard.beats);
        link->showLife();
        beats.push_back(guard.beats);
    });
    link->setBusy(true);
    pass(Guard::beatInterval);
    EXPECT_THAT(beats, ElementsAre(2, 2));
    EXPECT_EQ(guard.beats, 2);
    pass(Guard::beatInterval);
    EXPECT_EQ(guard.beats, 3);
}

TEST_F(GuardLinkTest, DeedsAreToldOnce) {
    link->setBusy(true);
    guard.deeds = {.gaveKeyboardBack = true};
    pass(Guard::beatInterval);
    guard.deeds = {.silenced = true};
    pass(3 * Guard::beatInterval);
    EXPECT_THAT(told, ElementsAre(Guard::Deeds{.gaveKeyboardBack = true}, Guard::Deeds{.silenced = true}));
}

TEST_F(GuardLinkTest, NothingIsExpectedBehindItsEnd) {
    link->setBusy(true);
    link.reset();
    EXPECT_FALSE(guard.expectsBeats);
    pass(10s);
    EXPECT_EQ(guard.beats, 1);
    system.announceChange();
    mainActor.runDue();
}

} // namespace
} // namespace tavro
