#include "Player/ScriptPlayer.h"

#include "Player/PlayedAtOnce.h"

#include <gtest/gtest.h>

#include <sstream>

namespace tavro {
namespace {

std::string printed(std::string_view script, const PerformanceState& state = {}) {
    std::ostringstream stream;
    JsonLinesOutput output(stream);
    playedAtOnce(KeyScript::parse(script), output, state);
    return stream.str();
}

TEST(ScriptPlayer, runsOutWhatTheScriptHasScheduled) {
    EXPECT_EQ(printed("set humanizeVelocity 0\nset scaleName \"Major\"\nset chordMode \"Triad\"\n"
                      "set strumMilliseconds 20\ndown a"),
              "{\"t\":0,\"midi\":[144,60,100]}\n{\"t\":20,\"midi\":[144,64,100]}\n{\"t\":40,\"midi\":[144,67,"
              "100]}\n");
}

TEST(ScriptPlayer, runsWorkThatIsDueBeforeTheNextCommand) {
    EXPECT_EQ(printed("set humanizeVelocity 0\nset scaleName \"Major\"\nset chordMode \"Triad\"\n"
                      "set strumMilliseconds 20\ndown a\nat 20\nup a"),
              "{\"t\":0,\"midi\":[144,60,100]}\n{\"t\":20,\"midi\":[144,64,100]}\n"
              "{\"t\":20,\"midi\":[128,60,0]}\n{\"t\":20,\"midi\":[128,64,0]}\n");
}

TEST(ScriptPlayer, showsTheReadOuts) {
    const auto text = printed("set humanizeVelocity 0\ndown \xC3\x84\ndown y\nat 3\nshow");
    EXPECT_EQ(text.substr(text.find("{\"t\":3")),
              "{\"t\":3,\"chord\":\"Unknown\",\"pressed\":[\"y\",\"\xC3\xA4\"],\"lit\":[\"y\",\"\xC3\xA4\"],"
              "\"status\":\"Note On C3\"}\n");
}

TEST(ScriptPlayer, readsNothingAfterQuitting) {
    const auto text = printed("quit\ndown a\nquit");
    EXPECT_EQ(std::ranges::count(text, '\n'), 32);
    EXPECT_EQ(text.find("144"), std::string::npos);
}

TEST(ScriptPlayer, startsWithTheGivenSettings) {
    EXPECT_EQ(printed("down a", {.velocity = 1, .humanizeVelocity = 0, .midiChannel = 3}),
              "{\"t\":0,\"midi\":[146,60,1]}\n");
}

TEST(TextOutput, saysTheMessageInBytesAndWords) {
    std::ostringstream stream;
    TextOutput output(stream);
    playedAtOnce(KeyScript::parse("set humanizeVelocity 0\nat 1500\ndown s\nshow\nup s\nshow"), output);
    EXPECT_EQ(stream.str(), "    1500 ms  90 3D 64  Note On C#4 velocity 100 channel 1\n"
                            "    1500 ms  chord C#4; pressed s; lit s; status Note On C#4\n"
                            "    1500 ms  80 3D 00  Note Off C#4 channel 1\n"
                            "    1500 ms  chord -; pressed none; lit none; status Note Off C#4\n");
}

TEST(TextOutput, namesThePanicMessages) {
    std::ostringstream stream;
    TextOutput output(stream);
    playedAtOnce(KeyScript::parse("panic"), output);
    EXPECT_TRUE(stream.str().starts_with("       0 ms  B0 7B 00  All Notes Off channel 1\n"
                                         "       0 ms  B0 78 00  All Sound Off channel 1\n"));
}

} // namespace
} // namespace tavro
