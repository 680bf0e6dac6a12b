#include "Performance/MidiSystemSetting.h"

#include "Concurrency/VirtualMainActor.h"
#include "Platform/Headless/BootClockAdapter.h"
#include "Platform/Headless/MidiSystemAdapter.h"
#include "Platform/Headless/UserDefaultsAdapter.h"
#include "PlatformInterfaces/PanicMessages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MidiSystemSettingTest : public testing::Test {
protected:
    void start(const QString& nameForThisRun = {}) {
        setting.emplace(table(), preferences, nameForThisRun, mainActor);
        midi.emplace(setting->systems(), mainActor);
        performance.emplace(*midi, mainActor, PerformanceState{.humanizeVelocity = 0});
    }

    void end() {
        performance.reset();
        midi.reset();
        setting.reset();
    }

    MidiSystemTable table() {
        std::vector<MidiSystemTable::Entry> entries;
        for (const std::string name : {"alsa", "jack"}) {
            entries.push_back(
                {QString::fromStdString(name), QString(),
                 [this, name](MainActor&, const MidiSystemOptions& options) { return make(name, options); }});
        }
        return MidiSystemTable(entries);
    }

    std::unique_ptr<MidiSystem> make(const std::string& name, const MidiSystemOptions& options) {
        auto system = std::make_unique<headless::MidiSystemAdapter>();
        system->clientStatus = statuses[name];
        system->onMessage = [this, name](const auto& message) { sent[name].push_back(message.bytes); };
        made.push_back(name + (options.asksForShortPeriod ? " short" : ""));
        return system;
    }

    QString statusText() const { return midi->statusText(); }

    VirtualMainActor mainActor;
    headless::UserDefaultsAdapter defaults;
    headless::BootClockAdapter bootClock;
    Preferences preferences{defaults, bootClock};
    std::map<std::string, std::int32_t> statuses;
    std::map<std::string, std::vector<std::vector<std::uint8_t>>> sent;
    std::vector<std::string> made;
    std::optional<MidiSystemSetting> setting;
    std::optional<MidiOutputManager> midi;
    std::optional<PerformanceController> performance;
};

const auto jack = QStringLiteral("jack");
const auto alsa = QStringLiteral("alsa");

TEST_F(MidiSystemSettingTest, isAutomaticUntilOneIsChosen) {
    start();
    EXPECT_EQ(setting->choice().name, MidiSystemTable::automatic());
    EXPECT_THAT(made, ElementsAre("alsa short", "jack short"));
}

TEST_F(MidiSystemSettingTest, keepsWhatIsChosen) {
    start();
    setting->choose({.name = jack, .asksForShortPeriod = false}, *performance, *midi);
    end();
    made.clear();
    start();
    EXPECT_EQ(setting->choice().name, jack);
    EXPECT_FALSE(setting->choice().asksForShortPeriod);
    EXPECT_THAT(made, ElementsAre("jack"));
}

TEST_F(MidiSystemSettingTest, standsBelowANameForOneRun) {
    start();
    setting->choose({.name = jack}, *performance, *midi);
    end();
    start(alsa);
    EXPECT_EQ(setting->choice().name, alsa);
    end();
    start();
    EXPECT_EQ(setting->choice().name, jack);
}

TEST_F(MidiSystemSettingTest, isAutomaticWhereTheStoredOneIsUnknown) {
    preferences.saveMidiSystem("oss");
    start();
    EXPECT_EQ(setting->choice().name, MidiSystemTable::automatic());
}

TEST_F(MidiSystemSettingTest, silencesTheOldSystemAndPlaysByTheNewOne) {
    start();
    performance->handleKeyDown(U'a');
    EXPECT_EQ(sent["alsa"].size(), 1U);
    setting->choose({.name = jack}, *performance, *midi);
    // The note-off, and the panic behind it.
    ASSERT_EQ(sent["alsa"].size(), 2U + panicMessages().size());
    EXPECT_EQ(sent["alsa"][1][0], 0x80);
    EXPECT_THAT(sent["jack"], IsEmpty());
    EXPECT_EQ(statusText(), QStringLiteral("Virtueller Ausgang aktiv"));
    performance->handleKeyDown(U's');
    EXPECT_EQ(sent["jack"].size(), 1U);
}

TEST_F(MidiSystemSettingTest, doesNothingForTheSameOneAgainOrAnUnknownOne) {
    start(jack);
    made.clear();
    setting->choose({.name = jack}, *performance, *midi);
    setting->choose({.name = QStringLiteral("oss")}, *performance, *midi);

    EXPECT_THAT(made, IsEmpty());
    EXPECT_EQ(defaults.string(PreferenceKey::midiSystem.name), std::nullopt);
}

TEST_F(MidiSystemSettingTest, forgetsTheDestinationOfTheOldSystem) {
    start();
    midi->setSelectedDestinationID(77);
    setting->choose({.name = jack}, *performance, *midi);
    EXPECT_EQ(midi->selectedDestinationID(), 0U);
}

} // namespace
} // namespace tavro
