#include "UserInterface/PerformanceSettings.h"

#include "PerformanceModel/PerformanceStateCoding.h"
#include "UserInterface/Instrument.h"

#include <nlohmann/json.hpp>

#include <QMetaProperty>

#include <gtest/gtest.h>

#include <limits>

namespace tavro {
namespace {

class PerformanceSettingsTest : public testing::Test {
protected:
    Instrument instrument_;
    PerformanceSettings settings_{instrument_.controller};
};

TEST_F(PerformanceSettingsTest, FieldsOfTheStateAreReadAndWrittenByTheirNames) {
    const QVariantMap values{
        {QStringLiteral("rootSemitone"), 5},
        {QStringLiteral("scaleName"), QStringLiteral("Dorian")},
        {QStringLiteral("globalOctaveOffset"), -2},
        {QStringLiteral("velocity"), 64},
        {QStringLiteral("humanizeVelocity"), 3},
        {QStringLiteral("strumMilliseconds"), -20},
        {QStringLiteral("maxChordNotes"), 4},
        {QStringLiteral("midiChannel"), 9},
        {QStringLiteral("bassNoteEnabled"), true},
        {QStringLiteral("bassOctaveDown"), 2},
        {QStringLiteral("melodyOctaveOffset"), 1},
        {QStringLiteral("keyboardLayout"), QStringLiteral("QWERTY")},
    };
    const auto names = PerformanceStateCoding::encode(PerformanceState());
    for (auto value = values.begin(); value != values.end(); ++value) {
        ASSERT_TRUE(names.contains(value.key().toStdString()));
        // Some changes bring others with them; each starts from the defaults.
        Instrument instrument;
        PerformanceSettings settings(instrument.controller);
        const auto before = instrument.controller.state();
        ASSERT_NE(settings.property(value.key().toLatin1().constData()), value.value());
        ASSERT_TRUE(settings.setProperty(value.key().toLatin1().constData(), value.value()));
        EXPECT_EQ(settings.property(value.key().toLatin1().constData()), value.value());
        EXPECT_EQ(PerformanceStateCoding::differences(before, instrument.controller.state()),
                  std::vector<std::string_view>{value.key().toStdString()})
            << value.key().toStdString();
    }
}

TEST_F(PerformanceSettingsTest, TellsTheDefaultsWhateverIsSet) {
    instrument_.controller.changeState({.globalOctaveOffset = 2, .velocity = 1, .voicingComplexity = 50});
    Instrument fresh;
    fresh.controller.changeState({});
    const PerformanceSettings unchanged(fresh.controller);
    const auto defaults = settings_.property("defaults").toMap();
    ASSERT_EQ(defaults.size(), 7);
    for (auto value = defaults.begin(); value != defaults.end(); ++value) {
        EXPECT_EQ(unchanged.property(value.key().toLatin1().constData()), value.value())
            << value.key().toStdString();
    }
}

TEST_F(PerformanceSettingsTest, TellsOfChangesFromElsewhere) {
    int changes = 0;
    QObject::connect(&settings_, &PerformanceSettings::changed, &settings_, [&changes] { ++changes; });
    auto state = instrument_.controller.state();
    state.velocity = 1;
    instrument_.controller.changeState(state);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(settings_.velocity(), 1);
}

TEST_F(PerformanceSettingsTest, UnknownNamesChangeNothing) {
    settings_.setKeyboardLayout(QStringLiteral("AZERTY"));
    EXPECT_EQ(settings_.keyboardLayout(), QStringLiteral("QWERTZ"));
}

TEST_F(PerformanceSettingsTest, HoldAndSmartHoldExcludeEachOther) {
    settings_.setHold(true);
    EXPECT_TRUE(settings_.hold());
    settings_.setSmartHold(true);
    EXPECT_TRUE(settings_.smartHold());
    EXPECT_FALSE(settings_.hold());
}

TEST_F(PerformanceSettingsTest, ChordsFollowTheComplexity) {
    settings_.setChordComplexity(80);
    settings_.setChordEnabled(true);
    EXPECT_EQ(settings_.chordMode(), QStringLiteral("Ninth"));
    settings_.setChordComplexity(64);
    EXPECT_EQ(settings_.chordMode(), QStringLiteral("Triad"));
    settings_.setChordEnabled(false);
    EXPECT_FALSE(settings_.chordEnabled());
    settings_.setSplitMode(true);
    EXPECT_TRUE(settings_.splitMode());
    EXPECT_TRUE(settings_.chordEnabled());
}

TEST_F(PerformanceSettingsTest, NumbersBeyondTheScenesAreShownAsTheNearest) {
    auto state = instrument_.controller.state();
    state.velocity = std::numeric_limits<std::int64_t>::max();
    instrument_.controller.changeState(state);
    EXPECT_EQ(settings_.velocity(), std::numeric_limits<int>::max());
}

} // namespace
} // namespace tavro
