#include "Platform/Headless/MidiSystemAdapter.h"
#include "Player/PlayedAtOnce.h"
#include "Player/ScriptPlayer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>

namespace tavro {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

constexpr std::string_view strummedTriad =
    "set humanizeVelocity 0\nset scaleName \"Major\"\nset chordMode \"Triad\"\n"
    "set strumMilliseconds 20\n";

/// Keeps a clock of its own: the time that was waited for last, which need not come exactly.
class ClockPacer final : public Pacer {
public:
    [[nodiscard]] bool waitUntil(std::chrono::nanoseconds time) override {
        if (time > clock) {
            clock = time;
            waits.push_back(std::chrono::duration_cast<std::chrono::milliseconds>(time));
            if (onWait) {
                onWait(time);
            }
        }
        return !isInterrupted;
    }

    void interrupt() override { isInterrupted = true; }

    std::chrono::nanoseconds clock{0};
    std::vector<std::chrono::milliseconds> waits;
    std::function<void(std::chrono::nanoseconds)> onWait;
    bool isInterrupted = false;
};

class LivePlaying : public testing::Test {
protected:
    void play(std::string_view commands) {
        player.play(KeyScript::parse(std::string(strummedTriad) + std::string(commands)));
    }

    [[nodiscard]] std::size_t sent() const { return midiSystem.messages.size(); }

    std::ostringstream printed;
    JsonLinesOutput output{printed};
    headless::MidiSystemAdapter midiSystem;
    ClockPacer pacer;
    ScriptPlayer player{output, midiSystem, pacer};
};

TEST_F(LivePlaying, waitsForEachPieceOfWorkAndEachCommand) {
    std::vector<std::size_t> sentBefore;
    pacer.onWait = [&](auto /*time*/) { sentBefore.push_back(sent()); };
    play("down a\nat 100\nup a\nat 250\nshow");
    EXPECT_THAT(pacer.waits, ElementsAre(20ms, 40ms, 100ms, 250ms));
    EXPECT_THAT(sentBefore, ElementsAre(1U, 2U, 3U, 6U));
}

TEST_F(LivePlaying, endsWithSilenceAndNotWithWhatWasScheduled) {
    play("down a");
    player.quit();
    EXPECT_EQ(sent(), 1U + 1U + 32U) << printed.str();
    EXPECT_TRUE(pacer.waits.empty());
    player.quit();
    EXPECT_EQ(sent(), 34U);
}

TEST_F(LivePlaying, stopsWhereItIsInterrupted) {
    pacer.onWait = [&](auto time) {
        if (time == 40ms) {
            pacer.interrupt();
        }
    };
    play("down a\nat 100\ndown s\nat 200\ndown d");
    EXPECT_EQ(sent(), 2U);
    EXPECT_FALSE(player.hasLostMidiSystem());
    player.quit();
    EXPECT_EQ(sent(), 2U + 2U + 32U) << printed.str();
}

TEST_F(LivePlaying, stopsWhenTheMidiSystemGoes) {
    pacer.onWait = [&](auto time) {
        if (time == 100ms) {
            midiSystem.loseConnection();
        }
    };
    play("down a\nat 100\ndown s");
    player.quit();
    EXPECT_TRUE(player.hasLostMidiSystem());
    EXPECT_EQ(sent(), 3U);
    EXPECT_FALSE(player.midi().isReady());
}

TEST_F(LivePlaying, handsOverAheadOnlyWhatNoCommandCanMeet) {
    midiSystem.schedules = true;
    std::map<std::chrono::milliseconds, std::size_t> handedOver;
    pacer.onWait = [&](auto time) {
        handedOver[std::chrono::duration_cast<std::chrono::milliseconds>(time)] = midiSystem.scheduled.size();
    };
    // Two more notes follow each press, 20 and 40 ms after it.
    play("down a\ndown s\nat 30\ndown d\nat 1000\nshow");
    // The command behind the first press is too near, the one behind the second only for its last note.
    EXPECT_EQ(handedOver.at(20ms), 1U);
    EXPECT_EQ(handedOver.at(30ms), 0U);
    EXPECT_EQ(handedOver.at(50ms), 2U);
    EXPECT_EQ(handedOver.at(70ms), 1U);
    EXPECT_EQ(handedOver.at(1000ms), 0U);
    EXPECT_EQ(sent(), 9U);
}

TEST_F(LivePlaying, sendsToTheChosenDestination) {
    midiSystem.destinations = {{.reference = 77, .displayName = "Synth", .name = {}}};
    player.selectDestination(77);
    play("down a");
    ASSERT_EQ(sent(), 1U);
    EXPECT_EQ(midiSystem.messages.front(), (headless::MidiSystemAdapter::Message{false, 77, {144, 60, 100}}));
}

std::vector<std::filesystem::path> scripts() {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(TAVRO_CASES)) {
        if (entry.path().extension() == ".keys") {
            paths.push_back(entry.path());
        }
    }
    std::ranges::sort(paths);
    return paths;
}

TEST(LiveOrder, isTheOrderOfVirtualTimeAlsoWhereTheSystemKeepsTheTimes) {
    ASSERT_EQ(scripts().size(), 120U);
    std::size_t handedOver = 0;
    for (const auto& path : scripts()) {
        std::ifstream file(path, std::ios::binary);
        const auto script = KeyScript::parse(std::string(std::istreambuf_iterator<char>(file), {}));
        std::ostringstream atOnce;
        JsonLinesOutput atOnceOutput(atOnce);
        const auto expected = playedAtOnce(script, atOnceOutput);

        std::ostringstream live;
        JsonLinesOutput liveOutput(live);
        headless::MidiSystemAdapter midiSystem;
        midiSystem.schedules = true;
        // As if whatever is taken back had just gone out.
        midiSystem.isTooLateToCancel = true;
        ClockPacer pacer;
        pacer.onWait = [&](auto /*time*/) { handedOver += midiSystem.scheduled.size(); };
        ScriptPlayer player(liveOutput, midiSystem, pacer);
        player.play(script);
        player.runOut();
        EXPECT_EQ(midiSystem.messages, expected) << path;
        EXPECT_EQ(live.str(), atOnce.str()) << path;
    }
    EXPECT_GT(handedOver, 0U);
}

} // namespace
} // namespace tavro
