#include "Platform/Qt/ProcessSignals.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <csignal>
#include <functional>
#include <optional>
#include <utility>

namespace tavro {
namespace {

class ProcessSignalsTest : public testing::TestWithParam<int> {
protected:
    /// Whoever started this program may have ignored some of them.
    void SetUp() override { forgetHandlers(); }

    void TearDown() override {
        stopListening();
        forgetHandlers();
    }

    /// What the process does on the signal.
    static auto handlerOf(int signal) {
        struct sigaction action{};
        sigaction(signal, nullptr, &action);
        return action.sa_handler;
    }

    void listen(std::function<void()> onStop = {}) {
        signals_.emplace(
            [this] {
                ++calls;
                QCoreApplication::quit();
            },
            std::move(onStop));
    }

    void stopListening() { signals_.reset(); }

    int calls = 0;

private:
    static void forgetHandlers() {
        for (const auto signal : {SIGTERM, SIGINT, SIGHUP, SIGQUIT, SIGTSTP}) {
            std::signal(signal, SIG_DFL);
        }
    }

    int argumentCount_ = 1;
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    QCoreApplication application_{argumentCount_, arguments_};
    std::optional<posix::ProcessSignals> signals_;
};

TEST_P(ProcessSignalsTest, EachIsOneCallOnTheMainThread) {
    listen();
    std::raise(GetParam());
    EXPECT_EQ(calls, 0);
    QCoreApplication::exec();
    EXPECT_EQ(calls, 1);
}

TEST_P(ProcessSignalsTest, SeveralAreOneCall) {
    listen();
    std::raise(SIGTERM);
    std::raise(GetParam());
    QCoreApplication::exec();
    std::raise(GetParam());
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, 1);
}

TEST_P(ProcessSignalsTest, AfterOneTheOthersDoNotCutTheEndOff) {
    listen();
    std::raise(GetParam());
    QCoreApplication::exec();
    stopListening();
    for (const auto signal : {SIGTERM, SIGINT, SIGHUP, SIGQUIT}) {
        EXPECT_EQ(handlerOf(signal), SIG_IGN);
    }
}

TEST_P(ProcessSignalsTest, WithoutOneTheNextEndsTheProcess) {
    listen();
    stopListening();
    EXPECT_EQ(handlerOf(GetParam()), SIG_DFL);
}

TEST_P(ProcessSignalsTest, StopIsACallAndTheProcessGoesOn) {
    auto stops = 0;
    listen([&] {
        ++stops;
        QCoreApplication::quit();
    });
    std::raise(SIGTSTP);
    QCoreApplication::exec();
    std::raise(SIGTSTP);
    QCoreApplication::exec();
    EXPECT_EQ(stops, 2);
    EXPECT_EQ(calls, 0);
    std::raise(SIGTERM);
    QCoreApplication::exec();
    EXPECT_EQ(calls, 1);
}

TEST_P(ProcessSignalsTest, WhatWasIgnoredStaysIgnored) {
    std::signal(GetParam(), SIG_IGN);
    listen([] {});
    EXPECT_EQ(handlerOf(GetParam()), SIG_IGN);
    stopListening();
    EXPECT_EQ(handlerOf(GetParam()), SIG_IGN);
}

INSTANTIATE_TEST_SUITE_P(All, ProcessSignalsTest, testing::Values(SIGTERM, SIGINT, SIGHUP, SIGQUIT));

} // namespace
} // namespace tavro
