#include "Platform/Qt/QtMainActor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>

#include <memory>
#include <thread>
#include <vector>

namespace tavro {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class QtMainActorTest : public testing::Test {
protected:
    /// Dropped timers are deleted by the event loop, and no other one follows in this program.
    void TearDown() override { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    /// Runs the event loop until `finish` is called.
    void runLoop() { QCoreApplication::exec(); }

    MainActor::Action note(int what) {
        return [this, what] { notes.push_back(what); };
    }

    std::vector<int> notes;

private:
    int argumentCount_ = 1;
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    QCoreApplication application_{argumentCount_, arguments_};

protected:
    QtMainActor actor;
};

TEST_F(QtMainActorTest, postsInOrderAndNeverInsideTheCall) {
    actor.post(note(1));
    actor.post(note(2));
    actor.post(&QCoreApplication::quit);
    EXPECT_THAT(notes, IsEmpty());
    runLoop();
    EXPECT_THAT(notes, ElementsAre(1, 2));
}

TEST_F(QtMainActorTest, takesPostsFromOtherThreadsAndRunsThemOnItsOwn) {
    const auto mainThread = std::this_thread::get_id();
    constexpr int posts = 1000;
    int onMainThread = 0;
    std::thread other([&] {
        for (int post = 0; post < posts; ++post) {
            actor.post([&] { onMainThread += std::this_thread::get_id() == mainThread ? 1 : 0; });
        }
        actor.post(&QCoreApplication::quit);
    });
    runLoop();
    other.join();
    EXPECT_EQ(onMainThread, posts);
}

TEST_F(QtMainActorTest, runsDelayedWorkInTheOrderOfItsTimes) {
    const auto late = actor.after(20ms, note(2));
    const auto early = actor.after(5ms, note(1));
    const auto end = actor.after(40ms, &QCoreApplication::quit);
    runLoop();
    EXPECT_THAT(notes, ElementsAre(1, 2));
}

TEST_F(QtMainActorTest, neverRunsDelayedWorkBeforeItsTime) {
    const auto start = actor.now();
    auto end = start;
    const auto task = actor.after(3ms + 1us, [&] {
        end = actor.now();
        QCoreApplication::quit();
    });
    runLoop();
    EXPECT_GE(end - start, 3ms);
}

TEST_F(QtMainActorTest, neverRunsWhatWasCancelledOrDropped) {
    auto cancelled = actor.after(1ms, note(1));
    auto replaced = actor.after(1ms, note(2));
    {
        const auto dropped = actor.after(1ms, note(3));
    }
    cancelled.cancel();
    replaced = actor.after(2ms, note(4));
    const auto end = actor.after(20ms, &QCoreApplication::quit);
    runLoop();
    EXPECT_THAT(notes, ElementsAre(4));
}

TEST_F(QtMainActorTest, letsWorkDropItsOwnHandle) {
    auto task = std::make_unique<ScheduledTask>();
    *task = actor.after(0ns, [&] {
        task.reset();
        notes.push_back(1);
    });
    const auto end = actor.after(20ms, &QCoreApplication::quit);
    runLoop();
    EXPECT_THAT(notes, ElementsAre(1));
}

} // namespace
} // namespace tavro
