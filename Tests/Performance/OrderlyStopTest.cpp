#include "Performance/OrderlyStop.h"

#include "Performance/GlobalKeyboardFixture.h"
#include "Platform/Headless/GuardAdapter.h"
#include "Platform/Headless/MidiSystemAdapter.h"
#include "PlatformInterfaces/PanicMessages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace tavro {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class OrderlyStopTest : public GlobalKeyboardFixture {
protected:
    OrderlyStopTest() {
        controller->setEnabled(true);
        link.setBusy(true);
    }

    void pass(std::chrono::nanoseconds time) { mainActor.runUntil(mainActor.now() + time); }

    headless::MidiSystemAdapter system;
    MidiOutputManager midi{system, mainActor};
    PerformanceController performance{midi, mainActor};
    headless::GuardAdapter guard;
    GuardLink link{guard, mainActor, midi};
    std::vector<std::string> steps;
    std::unique_ptr<OrderlyStop> stop = std::make_unique<OrderlyStop>(
        *controller, performance, link, mainActor,
        OrderlyStop::Actions{.stopNow =
                                 [this] {
                                     steps.push_back(tap.isEnabled() ? "stop with the tap on" : "stop");
                                     steps.push_back(guard.expectsBeats ? "guarded" : "unguarded");
                                 },
                             .tellGuard = [this] { link.setBusy(true); }});
};

TEST_F(OrderlyStopTest, GivesTheKeysBackAndSilencesAtOnce) {
    stop->begin();
    EXPECT_FALSE(tap.isEnabled());
    EXPECT_EQ(system.messages.size(), panicMessages().size());
    pass(300ms);
    EXPECT_THAT(steps, IsEmpty());
    EXPECT_TRUE(guard.expectsBeats);
}

TEST_F(OrderlyStopTest, StopsWhenThatHasSettledAndTakesUpAgain) {
    stop->begin();
    pass(1s);
    EXPECT_THAT(steps, ElementsAre("stop", "unguarded"));
    EXPECT_TRUE(guard.expectsBeats);
    EXPECT_TRUE(tap.isEnabled());
    EXPECT_FALSE(controller->isPaused());
}

TEST_F(OrderlyStopTest, IsCalledOffWhenItIsDropped) {
    stop->begin();
    stop.reset();
    pass(1s);
    EXPECT_THAT(steps, IsEmpty());
}

} // namespace
} // namespace tavro
