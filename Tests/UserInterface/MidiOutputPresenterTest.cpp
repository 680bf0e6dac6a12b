#include "UserInterface/MidiOutputPresenter.h"

#include "UserInterface/Instrument.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tavro {
namespace {

using testing::ElementsAre;

class MidiOutputPresenterTest : public testing::Test {
protected:
    std::vector<std::string> entries() const {
        std::vector<std::string> all;
        for (const auto& entry : presenter_.destinations()) {
            const auto map = entry.toMap();
            all.push_back(map.value(QStringLiteral("value")).toString().toStdString() + " " +
                          map.value(QStringLiteral("text")).toString().toStdString());
        }
        return all;
    }

    void setDestinations(std::vector<headless::MidiSystemAdapter::Destination> destinations) {
        instrument_.system.destinations = std::move(destinations);
        instrument_.system.announceChange();
        instrument_.actor.runDue();
    }

    Instrument instrument_;
    MidiOutputPresenter presenter_{instrument_.controller, instrument_.midi, instrument_.midiSystem};
};

TEST_F(MidiOutputPresenterTest, TheOwnSourceStandsFirst) {
    EXPECT_THAT(entries(), ElementsAre("0 TAVRO Out (virtual)"));
    EXPECT_EQ(presenter_.summary(), QStringLiteral("TAVRO Out (virtual)"));
    EXPECT_FALSE(presenter_.isUnavailable() || presenter_.isUnheard());
}

TEST_F(MidiOutputPresenterTest, DestinationsFollowTheSystem) {
    int changes = 0;
    QObject::connect(&presenter_, &MidiOutputPresenter::changed, &presenter_, [&changes] { ++changes; });
    setDestinations({{70, "Synth", {}}, {71, "Organ", {}}});
    EXPECT_GE(changes, 1);
    EXPECT_THAT(entries(), ElementsAre("0 TAVRO Out (virtual)", "70 Synth", "71 Organ"));
}

TEST_F(MidiOutputPresenterTest, AChosenDestinationThatHasGoneStaysChosen) {
    setDestinations({{70, "Synth", {}}});
    presenter_.selectDestination(70);
    EXPECT_EQ(presenter_.selectedDestination(), 70u);
    EXPECT_EQ(presenter_.summary(), QStringLiteral("Synth"));
    setDestinations({});
    EXPECT_THAT(entries(), ElementsAre("0 TAVRO Out (virtual)", "70 Synth (not available)"));
    EXPECT_EQ(presenter_.summary(), QStringLiteral("Synth (not available)"));
    EXPECT_TRUE(presenter_.isUnavailable());
    setDestinations({{70, "Synth", {}}});
    EXPECT_FALSE(presenter_.isUnavailable() || presenter_.isUnheard());
}

TEST_F(MidiOutputPresenterTest, ReadsNamesAnewWhenAsked) {
    setDestinations({{70, "Synth", {}}});
    instrument_.system.destinations[0].displayName = "Organ";
    EXPECT_THAT(entries(), ElementsAre("0 TAVRO Out (virtual)", "70 Synth"));
    presenter_.refresh();
    EXPECT_THAT(entries(), ElementsAre("0 TAVRO Out (virtual)", "70 Organ"));
}

TEST_F(MidiOutputPresenterTest, TellsWhoListens) {
    const auto listen = [this](std::size_t count) {
        instrument_.system.listenerCount = count;
        setDestinations({});
    };
    listen(0);
    EXPECT_EQ(presenter_.summary(), QStringLiteral("TAVRO Out (virtual) · 0 listeners"));
    EXPECT_TRUE(presenter_.isUnheard());
    listen(1);
    EXPECT_EQ(presenter_.summary(), QStringLiteral("TAVRO Out (virtual) · 1 listener"));
    EXPECT_FALSE(presenter_.isUnavailable() || presenter_.isUnheard());
    listen(2);
    EXPECT_EQ(presenter_.summary(), QStringLiteral("TAVRO Out (virtual) · 2 listeners"));
}

TEST_F(MidiOutputPresenterTest, TellsWhatWasLost) {
    instrument_.system.dropped = 3;
    instrument_.controller.handleKeyDown(U'a');
    EXPECT_EQ(presenter_.summary(), QStringLiteral("TAVRO Out (virtual) · 3 lost"));
}

TEST_F(MidiOutputPresenterTest, TellsThatThereIsNoMidi) {
    instrument_.system.loseConnection();
    instrument_.actor.runDue();
    EXPECT_EQ(presenter_.summary(), QStringLiteral("TAVRO Out (virtual) · no MIDI"));
    EXPECT_TRUE(presenter_.isUnavailable());
}

TEST_F(MidiOutputPresenterTest, ChoosingEndsWhatSounds) {
    setDestinations({{70, "Synth", {}}});
    instrument_.controller.handleKeyDown(U'a');
    instrument_.takeMessages();
    presenter_.selectDestination(70);
    ASSERT_FALSE(instrument_.system.messages.empty());
    EXPECT_TRUE(instrument_.system.messages.front().isFromSource);
    EXPECT_THAT(instrument_.system.messages.front().bytes, ElementsAre(0x80, 60, 0));
}

TEST_F(MidiOutputPresenterTest, TheStopButtonSilencesTheReceiversToo) {
    instrument_.controller.handleKeyDown(U'a');
    instrument_.takeMessages();
    presenter_.stopAllNotes();
    const auto messages = instrument_.takeMessages();
    // The note, and two controllers on each of sixteen channels.
    ASSERT_EQ(messages.size(), 33u);
    EXPECT_THAT(messages.front(), ElementsAre(0x80, 60, 0));
}

TEST_F(MidiOutputPresenterTest, TheStatusIsTheManagers) {
    int changes = 0;
    QObject::connect(&presenter_, &MidiOutputPresenter::statusTextChanged, &presenter_,
                     [&changes] { ++changes; });
    instrument_.controller.handleKeyDown(U'a');
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(presenter_.statusText(), QStringLiteral("Note On C4"));
}

TEST_F(MidiOutputPresenterTest, TheSystemCanBeChosen) {
    std::vector<std::string> systems;
    for (const auto& entry : presenter_.systems()) {
        const auto map = entry.toMap();
        systems.push_back(map.value(QStringLiteral("value")).toString().toStdString() + " " +
                          map.value(QStringLiteral("text")).toString().toStdString());
    }
    EXPECT_THAT(systems, ElementsAre("auto Automatic", "alsa ALSA", "jack JACK",
                                     "jack/own-period JACK, system default"));
    EXPECT_EQ(presenter_.system(), QStringLiteral("auto"));
    EXPECT_EQ(presenter_.periodText(), QString());
    presenter_.chooseSystem(QStringLiteral("jack"));
    EXPECT_EQ(presenter_.system(), QStringLiteral("jack"));
    EXPECT_EQ(presenter_.statusText(), QStringLiteral("Virtueller Ausgang aktiv"));
    EXPECT_TRUE(instrument_.midiSystem.choice().asksForShortPeriod);
    EXPECT_EQ(presenter_.periodText(), QStringLiteral("Period: 128 frames at 48000 Hz (2.7 ms)"));
}

TEST_F(MidiOutputPresenterTest, TheSystemsOwnPeriodCanBeChosen) {
    presenter_.chooseSystem(QStringLiteral("jack/own-period"));
    EXPECT_EQ(instrument_.midiSystem.choice().name, QStringLiteral("jack"));
    EXPECT_FALSE(instrument_.midiSystem.choice().asksForShortPeriod);
    EXPECT_EQ(presenter_.system(), QStringLiteral("jack/own-period"));
}

TEST_F(MidiOutputPresenterTest, ASystemThatMayComeIsSaidToBeLookedFor) {
    headless::MidiSystemAdapter late;
    late.clientStatus = -17;
    late.comesLater = true;
    instrument_.midi.setSystems({&late});
    EXPECT_EQ(
        presenter_.hint(),
        QStringLiteral("No MIDI system answers, so nothing can sound. TAVRO looks for one every second."));
    late.clientStatus = 0;
    instrument_.actor.runUntil(instrument_.actor.now() + std::chrono::seconds(1));
    EXPECT_EQ(presenter_.hint(), QString());
    // It is gone before the instrument.
    instrument_.midi.setSystems({&instrument_.system});
}

} // namespace
} // namespace tavro
