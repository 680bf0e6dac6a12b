#include "Updates/QtChildProcesses.h"

#include "Presets/TemporaryFolder.h"
#include "Updates/EventLoop.h"
#include "Updates/ExternalTool.h"
#include "Updates/UpdatesFixture.h"

#include <QFileInfo>

#include <optional>

namespace tavro {
namespace {

class QtChildProcessesTest : public testing::Test {
protected:
    Outcome<ChildProcesses::Exit> run(const QString& executable, const QStringList& arguments) {
        std::optional<Outcome<ChildProcesses::Exit>> outcome;
        const auto work = processes.run(executable, arguments,
                                        [&](const Outcome<ChildProcesses::Exit>& told) { outcome = told; });
        EXPECT_FALSE(outcome.has_value()) << "told inside the call";
        EventLoop::runUntil([&] { return outcome.has_value(); });
        return outcome.value_or(UpdateFailure::ofSystem(QStringLiteral("nothing was told")));
    }

    Outcome<ChildProcesses::Exit> shell(const char* script) {
        return run(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), QString::fromLatin1(script)});
    }

    QtChildProcesses processes;
};

TEST_F(QtChildProcessesTest, tellsStatusAndBothOutputsInOrder) {
    const auto exit = shell("echo one; echo two >&2; echo three; exit 3");
    ASSERT_TRUE(exit.isSuccess());
    EXPECT_EQ(exit.value().status, 3);
    EXPECT_EQ(exit.value().output, QByteArray("one\ntwo\nthree\n"));
}

TEST_F(QtChildProcessesTest, passesArgumentsAsTheyAre) {
    const auto exit =
        run(QStringLiteral("/bin/echo"), {QStringLiteral("-n"), QStringLiteral("a  b; $HOME \"c\"")});
    ASSERT_TRUE(exit.isSuccess());
    EXPECT_EQ(exit.value().output, QByteArray("a  b; $HOME \"c\""));
}

TEST_F(QtChildProcessesTest, givesNoInput) {
    const auto exit = shell("cat; echo end");
    ASSERT_TRUE(exit.isSuccess());
    EXPECT_EQ(exit.value().output, QByteArray("end\n"));
}

TEST_F(QtChildProcessesTest, tellsThatAToolWasKilled) {
    const auto exit = shell("kill -KILL $$");
    ASSERT_TRUE(exit.isSuccess());
    EXPECT_LT(exit.value().status, 0);
}

TEST_F(QtChildProcessesTest, failsWhenThereIsNoSuchTool) {
    const auto exit = run(QStringLiteral("/nonexistent/tool"), {});
    ASSERT_FALSE(exit.isSuccess());
    EXPECT_FALSE(exit.failure().description().isEmpty());
    EXPECT_FALSE(exit.failure().error());
}

TEST_F(QtChildProcessesTest, keepsTheBeginningOfVeryMuchOutput) {
    const auto exit = shell("echo begin; head -c 3000000 /dev/zero; exit 1");
    ASSERT_TRUE(exit.isSuccess());
    EXPECT_EQ(exit.value().status, 1);
    EXPECT_EQ(exit.value().output.size(), QtChildProcesses::longestOutput);
    EXPECT_TRUE(exit.value().output.startsWith("begin\n"));
}

TEST_F(QtChildProcessesTest, killsWhatIsDropped) {
    const TemporaryFolder folder;
    const auto pipe = folder.path(QStringLiteral("pipe"));
    ASSERT_TRUE(run(QStringLiteral("/usr/bin/mkfifo"), {pipe}).isSuccess());
    bool isTold = false;
    auto sleeper = processes.run(QStringLiteral("/bin/sh"),
                                 {QStringLiteral("-c"), QStringLiteral("exec sleep 1000 > '%1'").arg(pipe)},
                                 [&](const Outcome<ChildProcesses::Exit>&) { isTold = true; });
    // Opens when the sleeper has opened its end, and reads to the end when that one is gone.
    std::optional<Outcome<ChildProcesses::Exit>> reader;
    const auto reading = processes.run(
        QStringLiteral("/bin/sh"),
        {QStringLiteral("-c"), QStringLiteral("exec 3< '%1'; echo open > '%1.open'; cat <&3").arg(pipe)},
        [&](const Outcome<ChildProcesses::Exit>& told) { reader = told; });
    EventLoop::runUntil([&] { return QFileInfo::exists(pipe + QLatin1String(".open")); });
    EXPECT_FALSE(reader.has_value());
    sleeper.reset();
    EventLoop::runUntil([&] { return reader.has_value(); });
    EXPECT_FALSE(isTold);
}

TEST_F(QtChildProcessesTest, startsWhatNobodyWaitsFor) {
    const TemporaryFolder folder;
    const auto file = folder.path(QStringLiteral("started"));
    processes.start(QStringLiteral("/usr/bin/touch"), {file});
    EventLoop::runUntil([&] { return QFileInfo::exists(file); });
}

TEST_F(QtChildProcessesTest, toolsGiveTheirOutputOrFailWithIt) {
    const auto tool = [&](const char* script) {
        std::optional<Outcome<QString>> outcome;
        const auto work = ExternalTool::run(processes, QStringLiteral("/bin/sh"),
                                            {QStringLiteral("-c"), QString::fromLatin1(script)},
                                            [&](const Outcome<QString>& told) { outcome = told; });
        EventLoop::runUntil([&] { return outcome.has_value(); });
        return outcome.value_or(UpdateFailure::ofSystem({}));
    };
    const auto good = tool("echo ' fine '");
    ASSERT_TRUE(good.isSuccess());
    EXPECT_EQ(good.value(), QStringLiteral(" fine \n"));
    const auto bad = tool("echo; echo ' bad '; echo worse >&2; exit 1");
    ASSERT_FALSE(bad.isSuccess());
    EXPECT_EQ(bad.failure(), UpdateFailure(UpdateError::commandFailed(QStringLiteral("bad \nworse"))));
    const auto noText = tool("printf '\\377\\376'; exit 1");
    ASSERT_FALSE(noText.isSuccess());
    EXPECT_EQ(noText.failure(), UpdateFailure(UpdateError::commandFailed({})));
}

} // namespace
} // namespace tavro
