#include "Platform/Qt/TerminationSignals.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <csignal>
#include <optional>

namespace tavro {
namespace {

class TerminationSignalsTest : public testing::TestWithParam<int> {
protected:
    void TearDown() override {
        for (const auto signal : {SIGTERM, SIGINT, SIGHUP}) {
            std::signal(signal, SIG_DFL);
        }
    }

    /// What the process does on the signal.
    static auto handlerOf(int signal) {
        struct sigaction action{};
        sigaction(signal, nullptr, &action);
        return action.sa_handler;
    }

    void listen() {
        signals_.emplace([this] {
            ++calls;
            QCoreApplication::quit();
        });
    }

    void stopListening() { signals_.reset(); }

    int calls = 0;

private:
    int argumentCount_ = 1;
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    QCoreApplication application_{argumentCount_, arguments_};
    std::optional<posix::TerminationSignals> signals_;
};

TEST_P(TerminationSignalsTest, EachIsOneCallOnTheMainThread) {
    listen();
    std::raise(GetParam());
    EXPECT_EQ(calls, 0);
    QCoreApplication::exec();
    EXPECT_EQ(calls, 1);
}

TEST_P(TerminationSignalsTest, SeveralAreOneCall) {
    listen();
    std::raise(SIGTERM);
    std::raise(GetParam());
    QCoreApplication::exec();
    std::raise(GetParam());
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, 1);
}

TEST_P(TerminationSignalsTest, AfterOneTheOthersDoNotCutTheEndOff) {
    listen();
    std::raise(GetParam());
    QCoreApplication::exec();
    stopListening();
    for (const auto signal : {SIGTERM, SIGINT, SIGHUP}) {
        EXPECT_EQ(handlerOf(signal), SIG_IGN);
    }
}

TEST_P(TerminationSignalsTest, WithoutOneTheNextEndsTheProcess) {
    listen();
    stopListening();
    EXPECT_EQ(handlerOf(GetParam()), SIG_DFL);
}

INSTANTIATE_TEST_SUITE_P(All, TerminationSignalsTest, testing::Values(SIGTERM, SIGINT, SIGHUP));

} // namespace
} // namespace tavro
