#include "ApplicationShell/ApplicationOptions.h"

#include "MidiOutput/MidiSystemTable.h"

#include <gtest/gtest.h>

namespace tavro {
namespace {

const MidiSystemTable midiSystems({{QStringLiteral("alsa"), QString(), nullptr},
                                   {QStringLiteral("jack"), QString(), nullptr}});

ApplicationOptions parse(QStringList arguments, const QString& midiFromEnvironment = {}) {
    arguments.prepend(QStringLiteral("tavro"));
    return ApplicationOptions::parse(arguments, midiSystems, midiFromEnvironment);
}

std::string errorOf(const QStringList& arguments, const QString& midiFromEnvironment = {}) {
    try {
        (void)parse(arguments, midiFromEnvironment);
    } catch (const ApplicationOptions::Error& error) {
        return error.what();
    }
    return "no error";
}

TEST(ApplicationOptions, runByDefaultWithTheDefaultSettings) {
    const auto options = parse({});
    EXPECT_EQ(options.task, ApplicationOptions::Task::run);
    EXPECT_EQ(options.initialState, PerformanceState());
    EXPECT_FALSE(options.hasInitialState);
    EXPECT_EQ(options.presetFile, QString());
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
    EXPECT_TRUE(options.hasInitialState);
}

TEST(ApplicationOptions, takeOnePresetAnywhere) {
    EXPECT_EQ(parse({QStringLiteral("a b.tvp")}).presetFile, QStringLiteral("a b.tvp"));
    const auto options = parse({QStringLiteral("--state"), QStringLiteral(R"({"velocity":3})"),
                                QStringLiteral("song.tvp"), QStringLiteral("--midi=jack")});
    EXPECT_EQ(options.presetFile, QStringLiteral("song.tvp"));
    EXPECT_EQ(options.initialState.velocity, 3);
    EXPECT_EQ(options.midi, QStringLiteral("jack"));
    EXPECT_EQ(parse({QStringLiteral("--"), QStringLiteral("--odd.tvp")}).presetFile,
              QStringLiteral("--odd.tvp"));
}

TEST(ApplicationOptions, chooseTheMidiSystemByOptionThenEnvironmentThenByItself) {
    const QStringList jack{QStringLiteral("--midi"), QStringLiteral("jack")};
    EXPECT_EQ(parse({}).midi, QString());
    EXPECT_EQ(parse({}, QStringLiteral("alsa")).midi, QStringLiteral("alsa"));
    EXPECT_EQ(parse(jack).midi, QStringLiteral("jack"));
    EXPECT_EQ(parse(jack, QStringLiteral("alsa")).midi, QStringLiteral("jack"));
}

TEST(ApplicationOptions, refuseMidiSystemsThatNobodyKnows) {
    EXPECT_EQ(errorOf({QStringLiteral("--midi"), QStringLiteral("oss")}),
              "--midi is auto, alsa or jack, not \"oss\"");
    EXPECT_EQ(errorOf({QStringLiteral("--midi"), QString()}), "--midi is auto, alsa or jack, not \"\"");
    EXPECT_EQ(errorOf({}, QStringLiteral("oss")), "TAVRO_MIDI is auto, alsa or jack, not \"oss\"");
}

TEST(ApplicationOptions, refuseWhatTheyDoNotUnderstand) {
    EXPECT_EQ(errorOf({QStringLiteral("a.tvp"), QStringLiteral("b.tvp")}),
              "only one preset can be opened, found also \"b.tvp\"");
    EXPECT_EQ(errorOf({QString()}), "the name of the preset's file is empty");
    EXPECT_NE(errorOf({QStringLiteral("--loud")}).find("loud"), std::string::npos);
    EXPECT_EQ(errorOf({QStringLiteral("--state"), QStringLiteral("{")}), "--state: not JSON: {");
    EXPECT_EQ(errorOf({QStringLiteral("--state"), QStringLiteral(R"({"velocity":"3"})")}),
              "--state: \"velocity\": expected an integer, found \"3\"");
}

TEST(ApplicationOptions, helpShowsWhatUsersNeedAndNoMore) {
    const auto help = ApplicationOptions::helpText(midiSystems);
    EXPECT_TRUE(help.contains(QStringLiteral("--version")));
    EXPECT_TRUE(help.contains(QStringLiteral("--midi <auto|alsa|jack>")));
    EXPECT_TRUE(help.contains(QStringLiteral("TAVRO_MIDI")));
    EXPECT_TRUE(help.contains(QStringLiteral("[FILE.tvp]")));
    EXPECT_FALSE(help.contains(QStringLiteral("--self-test")));
}

} // namespace
} // namespace tavro
