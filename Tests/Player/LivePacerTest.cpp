#include "Player/LivePacer.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTimer>

namespace tavro {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

class LivePacerTest : public testing::Test {
private:
    int argumentCount_ = 1;
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    QCoreApplication application_{argumentCount_, arguments_};

protected:
    LivePacer pacer;
    QObject context;
};

TEST_F(LivePacerTest, returnsNoEarlierThanTheTimeAfterTheStart) {
    const auto start = Clock::now();
    EXPECT_TRUE(pacer.waitUntil(0ms));
    for (const auto time : {300us, 1500us, 4000us, 4000us, 9700us}) {
        EXPECT_TRUE(pacer.waitUntil(time));
        EXPECT_GE(Clock::now() - start, time);
    }
}

TEST_F(LivePacerTest, workOfTheEventLoopRunsMeanwhile) {
    EXPECT_TRUE(pacer.waitUntil(0ms));
    bool hasRun = false;
    QTimer::singleShot(5, &context, [&] { hasRun = true; });
    EXPECT_TRUE(pacer.waitUntil(20ms));
    EXPECT_TRUE(hasRun);
}

TEST_F(LivePacerTest, workOfTheEventLoopRunsAlsoWhenItIsLate) {
    EXPECT_TRUE(pacer.waitUntil(0ms));
    bool hasRun = false;
    QMetaObject::invokeMethod(&context, [&] { hasRun = true; }, Qt::QueuedConnection);
    EXPECT_TRUE(pacer.waitUntil(0ms));
    EXPECT_TRUE(hasRun);
}

TEST_F(LivePacerTest, interruptionEndsTheWaitingForGood) {
    EXPECT_TRUE(pacer.waitUntil(0ms));
    QTimer::singleShot(1, &context, [&] { pacer.interrupt(); });
    EXPECT_FALSE(pacer.waitUntil(24h));
    EXPECT_FALSE(pacer.waitUntil(0ms));
    EXPECT_FALSE(pacer.waitUntil(24h));
}

} // namespace
} // namespace tavro
