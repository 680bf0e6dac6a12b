#include "Concurrency/VirtualMainActor.h"

#include <gmock/gmock.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace tavro {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class VirtualTime : public testing::Test {
protected:
    /// Work that notes its name and the time in milliseconds at which it ran.
    MainActor::Action noting(std::string name) {
        return [this, name] {
            ran.push_back(
                name + "@" +
                std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(actor.now()).count()));
        };
    }

    VirtualMainActor actor;
    std::vector<std::string> ran;
};

TEST_F(VirtualTime, StandsStillAtZero) {
    EXPECT_EQ(actor.now(), 0ns);
    EXPECT_FALSE(actor.hasWork());
    actor.runDue();
    actor.runToEnd();
    EXPECT_EQ(actor.now(), 0ns);
}

TEST_F(VirtualTime, TellsWhenTheNextWorkIsDue) {
    EXPECT_EQ(actor.nextDue(), std::nullopt);
    const auto late = actor.after(30ms, noting("late"));
    auto early = actor.after(10ms, noting("early"));
    EXPECT_EQ(actor.nextDue(), 10ms);
    early.cancel();
    EXPECT_EQ(actor.nextDue(), 30ms);
    actor.runUntil(5ms);
    actor.post(noting("posted"));
    EXPECT_EQ(actor.nextDue(), 5ms);
    actor.runToEnd();
    EXPECT_EQ(actor.nextDue(), std::nullopt);
}

TEST_F(VirtualTime, PostedWorkRunsInOrderAndNotAtOnce) {
    actor.post(noting("one"));
    actor.post(noting("two"));
    EXPECT_THAT(ran, IsEmpty());
    EXPECT_TRUE(actor.hasWork());
    actor.runDue();
    EXPECT_THAT(ran, ElementsAre("one@0", "two@0"));
    EXPECT_FALSE(actor.hasWork());
    actor.runDue();
    EXPECT_EQ(ran.size(), 2U);
}

TEST_F(VirtualTime, WorkRunsAtItsTimeInTheOrderOfDueTimeThenOfScheduling) {
    const auto late = actor.after(30ms, noting("late"));
    const auto early = actor.after(10ms, noting("early"));
    const auto second = actor.after(10ms, noting("second"));
    actor.runUntil(9ms);
    EXPECT_THAT(ran, IsEmpty());
    EXPECT_EQ(actor.now(), 9ms);
    actor.runUntil(29ms);
    EXPECT_THAT(ran, ElementsAre("early@10", "second@10"));
    actor.runUntil(30ms);
    EXPECT_THAT(ran, ElementsAre("early@10", "second@10", "late@30"));
    EXPECT_EQ(actor.now(), 30ms);
}

TEST_F(VirtualTime, DelaysCountFromTheTimeOfScheduling) {
    actor.runUntil(100ms);
    const auto task = actor.after(5ms, noting("work"));
    actor.runToEnd();
    EXPECT_THAT(ran, ElementsAre("work@105"));
}

TEST_F(VirtualTime, ZeroAndNegativeDelaysAreDueNowButNotInsideTheCall) {
    actor.runUntil(7ms);
    const auto zero = actor.after(0ns, noting("zero"));
    const auto negative = actor.after(-5ms, noting("negative"));
    actor.post(noting("posted"));
    EXPECT_THAT(ran, IsEmpty());
    actor.runDue();
    EXPECT_THAT(ran, ElementsAre("zero@7", "negative@7", "posted@7"));
}

TEST_F(VirtualTime, NeverGoesBackwards) {
    actor.runUntil(50ms);
    const auto due = actor.after(0ns, noting("due"));
    actor.runUntil(20ms);
    EXPECT_EQ(actor.now(), 50ms);
    EXPECT_THAT(ran, ElementsAre("due@50"));
}

TEST_F(VirtualTime, ADelayPastTheEndOfTheClockWaitsAtItsEnd) {
    actor.runUntil(1ms);
    const auto task = actor.after(std::chrono::nanoseconds::max(), noting("end"));
    actor.runUntil(std::chrono::hours(24));
    EXPECT_THAT(ran, IsEmpty());
    EXPECT_TRUE(actor.hasWork());
}

TEST_F(VirtualTime, CancelledWorkDoesNotRun) {
    auto task = actor.after(10ms, noting("work"));
    EXPECT_TRUE(actor.hasWork());
    task.cancel();
    task.cancel();
    EXPECT_FALSE(actor.hasWork());
    actor.runUntil(20ms);
    EXPECT_THAT(ran, IsEmpty());
}

TEST_F(VirtualTime, WorkWhoseHandleIsGoneDoesNotRun) {
    {
        const auto task = actor.after(10ms, noting("destroyed"));
    }
    auto task = actor.after(10ms, noting("assigned over"));
    task = actor.after(20ms, noting("kept"));
    actor.runToEnd();
    EXPECT_THAT(ran, ElementsAre("kept@20"));
}

TEST_F(VirtualTime, AMovedHandleStillHoldsTheWork) {
    std::vector<ScheduledTask> tasks;
    {
        auto task = actor.after(10ms, noting("moved"));
        tasks.push_back(std::move(task));
    }
    actor.runToEnd();
    EXPECT_THAT(ran, ElementsAre("moved@10"));
}

TEST_F(VirtualTime, CancelledWorkDoesNotMoveTheTimeOfTheEnd) {
    const auto kept = actor.after(10ms, noting("kept"));
    auto cancelled = actor.after(90ms, noting("cancelled"));
    cancelled.cancel();
    actor.runToEnd();
    EXPECT_EQ(actor.now(), 10ms);
}

TEST_F(VirtualTime, WorkMayScheduleMoreOnTheWay) {
    std::optional<ScheduledTask> inner;
    const auto outer = actor.after(10ms, [&] {
        noting("outer")();
        actor.post(noting("posted"));
        inner = actor.after(5ms, noting("inner"));
    });
    const auto other = actor.after(12ms, noting("other"));
    actor.runUntil(20ms);
    EXPECT_THAT(ran, ElementsAre("outer@10", "posted@10", "other@12", "inner@15"));
}

TEST_F(VirtualTime, WorkMayCancelWorkThatIsDueAtTheSameTime) {
    std::optional<ScheduledTask> victim;
    const auto killer = actor.after(10ms, [&] { victim->cancel(); });
    victim = actor.after(10ms, noting("victim"));
    actor.runToEnd();
    EXPECT_THAT(ran, IsEmpty());
}

TEST_F(VirtualTime, WorkThatEndsItsOwnHandleRunsToItsEnd) {
    std::optional<ScheduledTask> own;
    const std::string captured = "a text that is too long to be stored inside its object";
    own = actor.after(10ms, [&own, this, captured] {
        own.reset();
        ran.push_back(captured);
    });
    actor.runToEnd();
    EXPECT_THAT(ran, ElementsAre(captured));
    EXPECT_FALSE(actor.hasWork());
}

TEST_F(VirtualTime, HandlesMayOutliveTheActor) {
    std::optional<VirtualMainActor> shortLived(std::in_place);
    auto task = shortLived->after(10ms, noting("never"));
    shortLived.reset();
    task.cancel();
    EXPECT_THAT(ran, IsEmpty());
}

} // namespace
} // namespace tavro
