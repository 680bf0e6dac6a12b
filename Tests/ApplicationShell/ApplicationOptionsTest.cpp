#include "ApplicationShell/ApplicationOptions.h"

#include <gtest/gtest.h>

namespace tavro {
namespace {

ApplicationOptions parse(QStringList arguments) {
    arguments.prepend(QStringLiteral("tavro"));
    return ApplicationOptions::parse(arguments);
}

std::string errorOf(const QStringList& arguments) {
    try {
        (void)parse(arguments);
    } catch (const ApplicationOptions::Error& error) {
        return error.what();
    }
    return "no error";
}

TEST(ApplicationOptions, runByDefaultWithTheDefaultSettings) {
    const auto options = parse({});
    EXPECT_EQ(options.task, ApplicationOptions::Task::run);
    EXPECT_EQ(options.initialState, PerformanceState());
    EXPECT_FALSE(options.printsStatus);
}

TEST(ApplicationOptions, tellTheTask) {
    EXPECT_EQ(parse({QStringLiteral("--help")}).task, ApplicationOptions::Task::showHelp);
    EXPECT_EQ(parse({QStringLiteral("--version")}).task, ApplicationOptions::Task::showVersion);
    EXPECT_EQ(parse({QStringLiteral("--self-test")}).task, ApplicationOptions::Task::selfTest);
}

TEST(ApplicationOptions, takeSettings) {
    const auto options = parse({QStringLiteral("--state"), QStringLiteral(R"({"velocity":3})")});
    EXPECT_EQ(options.initialState, (PerformanceState{.velocity = 3}));
}

TEST(ApplicationOptions, refuseWhatTheyDoNotUnderstand) {
    EXPECT_EQ(errorOf({QStringLiteral("song.mid")}), "unexpected argument \"song.mid\"");
    EXPECT_NE(errorOf({QStringLiteral("--loud")}).find("loud"), std::string::npos);
    EXPECT_EQ(errorOf({QStringLiteral("--state"), QStringLiteral("{")}), "--state: not JSON: {");
    EXPECT_EQ(errorOf({QStringLiteral("--state"), QStringLiteral(R"({"velocity":"3"})")}),
              "--state: \"velocity\": expected an integer, found \"3\"");
}

TEST(ApplicationOptions, helpShowsWhatUsersNeedAndNoMore) {
    const auto help = ApplicationOptions::helpText();
    EXPECT_TRUE(help.contains(QStringLiteral("--version")));
    EXPECT_FALSE(help.contains(QStringLiteral("--self-test")));
}

} // namespace
} // namespace tavro
