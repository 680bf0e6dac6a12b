#include "UserInterface/MainWindowFixture.h"

#include <map>
#include <string>
#include <vector>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(MainWindowTest, AKeyInTheWindowPlays) {
    EXPECT_TRUE(instrument_.controller.isFocused());
    a_.press(*window_);
    EXPECT_THAT(instrument_.takeMessages(), ElementsAre(ElementsAre(0x90, 60, 100)));
    EXPECT_TRUE(cell(QStringLiteral("A"))->property("isPressed").toBool());
    a_.release(*window_);
    EXPECT_THAT(instrument_.takeMessages(), ElementsAre(ElementsAre(0x80, 60, 0)));
    EXPECT_FALSE(cell(QStringLiteral("A"))->property("isPressed").toBool());
}

TEST_F(MainWindowTest, LosingTheFocusEndsTheNotes) {
    a_.press(*window_);
    instrument_.takeMessages();
    QFocusEvent event(QEvent::FocusOut);
    QCoreApplication::sendEvent(window_, &event);
    EXPECT_THAT(instrument_.takeMessages(), ElementsAre(ElementsAre(0x80, 60, 0)));
}

TEST_F(MainWindowTest, TheLayoutOfTheSettingsIsTheKeyboards) {
    auto state = instrument_.controller.state();
    state.keyboardLayout = KeyboardLayoutKind::qwerty;
    instrument_.controller.changeState(state);
    KeyEvents{.evdevCode = KEY_SEMICOLON, .key = Qt::Key_Semicolon}.press(*window_);
    EXPECT_THAT(instrument_.takeMessages(), ElementsAre(ElementsAre(0x90, 69, 100)));
    EXPECT_NE(cell(QStringLiteral(";")), nullptr);
    EXPECT_EQ(cell(QStringLiteral("Ö")), nullptr);
}

TEST_F(MainWindowTest, TheMousePlaysAKeyUntilItsButtonIsReleasedAnywhere) {
    const auto position = centre(*cell(QStringLiteral("D")));
    mouse(QEvent::MouseButtonPress, position);
    EXPECT_THAT(instrument_.takeMessages(), ElementsAre(ElementsAre(0x90, 62, 100)));
    mouse(QEvent::MouseMove, position + QPointF(0, -300));
    EXPECT_THAT(instrument_.takeMessages(), IsEmpty());
    mouse(QEvent::MouseButtonRelease, position + QPointF(0, -300));
    EXPECT_THAT(instrument_.takeMessages(), ElementsAre(ElementsAre(0x80, 62, 0)));
}

TEST_F(MainWindowTest, SlidingTheMousePlaysKeyByKey) {
    const auto first = centre(*cell(QStringLiteral("D")));
    const auto second = centre(*cell(QStringLiteral("F")));
    mouse(QEvent::MouseButtonPress, first);
    mouse(QEvent::MouseMove, (first + second) / 2);
    EXPECT_THAT(instrument_.takeMessages(), ElementsAre(ElementsAre(0x90, 62, 100)));
    mouse(QEvent::MouseMove, second);
    EXPECT_THAT(instrument_.takeMessages(),
                ElementsAre(ElementsAre(0x80, 62, 0), ElementsAre(0x90, 63, 100)));
    EXPECT_FALSE(cell(QStringLiteral("D"))->property("isPressed").toBool());
    EXPECT_TRUE(cell(QStringLiteral("F"))->property("isPressed").toBool());
    mouse(QEvent::MouseButtonRelease, second);
    EXPECT_THAT(instrument_.takeMessages(), ElementsAre(ElementsAre(0x80, 63, 0)));
}

TEST_F(MainWindowTest, ThePanelsOpenAndCloseAndTellTheirSettingsWhileClosed) {
    const auto quiet = QStringLiteral("Complexity 0 · Note limit 8 · Strum 0 ms · Split off");
    const auto& advanced = *items(QStringLiteral("DisclosurePanel")).at(0);
    EXPECT_TRUE(find(QStringLiteral("QQuickText"), "text", quiet)->isVisible());
    EXPECT_FALSE(items(QStringLiteral("AdvancedPerformanceTile")).at(0)->isVisible());
    toggleAdvanced();
    EXPECT_FALSE(find(QStringLiteral("QQuickText"), "text", quiet)->isVisible());
    EXPECT_TRUE(items(QStringLiteral("AdvancedPerformanceTile")).at(0)->isVisible());
    EXPECT_EQ(advanced.height(), 148);
    toggleAdvanced();
    EXPECT_EQ(advanced.height(), 44);
    const auto& settings = *items(QStringLiteral("SettingsPanel")).at(0);
    EXPECT_EQ(settings.property("summary").toString(),
              QStringLiteral("TAVRO Out (virtual) · Channel 1 · QWERTZ (German)"));
    toggleSettings();
    EXPECT_EQ(settings.height(), 152);
}

TEST_F(MainWindowTest, EveryKeyStandsInsideTheWindowAndOnNoOther) {
    for (const int width : {1280, 720}) {
        window_->resize(width, width == 1280 ? 805 : 520);
        QCoreApplication::processEvents();
        std::vector<QRectF> places;
        for (const auto* item : items(QStringLiteral("KeyCell"))) {
            places.push_back(item->mapRectToScene(QRectF(0, 0, item->width(), item->height())));
        }
        ASSERT_EQ(places.size(), 45u);
        for (std::size_t first = 0; first < places.size(); ++first) {
            EXPECT_TRUE(QRectF(0, 0, window_->width(), window_->height()).contains(places[first]));
            for (std::size_t second = first + 1; second < places.size(); ++second) {
                EXPECT_FALSE(places[first].intersects(places[second]));
            }
        }
    }
}

TEST_F(MainWindowTest, AClickedControlLeavesTheKeysPlaying) {
    click(*find(QStringLiteral("TogglePill"), "label", QStringLiteral("Chord")));
    EXPECT_EQ(state().chordMode, ChordMode::triad);
    a_.press(*window_);
    EXPECT_EQ(instrument_.takeMessages().size(), 3u);
}

TEST_F(MainWindowTest, ATypedNumberIsTakenWithEnterAndTheKeysPlayAgain) {
    click(*find(QStringLiteral("EditableNumericValue"), "label", QStringLiteral("Velocity")));
    type(QStringLiteral("64"));
    EXPECT_EQ(state().velocity, 100);
    EXPECT_THAT(instrument_.takeMessages(), IsEmpty());
    enter_.press(*window_);
    EXPECT_EQ(state().velocity, 64);
    a_.press(*window_);
    EXPECT_THAT(instrument_.takeMessages(), ElementsAre(ElementsAre(0x90, 60, 64)));
}

TEST_F(MainWindowTest, EverySliderGoesBackToTheDefaultOfItsSetting) {
    toggleAdvanced();
    const std::map<std::string, int> defaults{{"Octave", 0},       {"Velocity", 100},       {"Humanize", 7},
                                              {"Strum", 0},        {"Chord Complexity", 0}, {"Note Limit", 8},
                                              {"Melody Octave", 0}};
    std::map<std::string, int> found;
    for (const auto* tile : items(QStringLiteral("SliderTile"))) {
        found[tile->property("title").toString().toStdString()] = tile->property("defaultValue").toInt();
    }
    EXPECT_EQ(found, defaults);
}

TEST_F(MainWindowTest, ATypedNumberOutOfRangeIsClampedWhenTheFieldIsLeft) {
    toggleAdvanced();
    click(*find(QStringLiteral("EditableNumericValue"), "label", QStringLiteral("Strum")));
    type(QStringLiteral("-300"));
    click(*find(QStringLiteral("TogglePill"), "label", QStringLiteral("Hold")));
    EXPECT_EQ(state().strumMilliseconds, -50);
    EXPECT_TRUE(state().holdMode);
}

TEST_F(MainWindowTest, EscapeDropsTheDraft) {
    click(*find(QStringLiteral("EditableNumericValue"), "label", QStringLiteral("Velocity")));
    type(QStringLiteral("64"));
    KeyEvents{.evdevCode = KEY_ESC, .key = Qt::Key_Escape}.press(*window_);
    EXPECT_EQ(state().velocity, 100);
    a_.press(*window_);
    EXPECT_THAT(instrument_.takeMessages(), ElementsAre(ElementsAre(0x90, 60, 100)));
}

TEST_F(MainWindowTest, WhatIsNoNumberIsDiscarded) {
    toggleAdvanced();
    click(*find(QStringLiteral("EditableNumericValue"), "label", QStringLiteral("Note Limit")));
    type(QStringLiteral("off"));
    enter_.press(*window_);
    EXPECT_EQ(state().maxChordNotes, 8);
}

TEST_F(MainWindowTest, AltWithADoubleClickBringsASliderBackToItsDefault) {
    auto changed = state();
    changed.velocity = 20;
    instrument_.controller.changeState(changed);
    const auto* slider = find(QStringLiteral("CleanValueSlider"), "label", QStringLiteral("Velocity"));
    const auto position = centre(*slider);
    timestamp_ += 10000;
    mouse(QEvent::MouseButtonPress, position, Qt::AltModifier);
    mouse(QEvent::MouseButtonRelease, position, Qt::AltModifier);
    EXPECT_EQ(state().velocity, 64);
    mouse(QEvent::MouseButtonPress, position, Qt::AltModifier);
    mouse(QEvent::MouseButtonDblClick, position, Qt::AltModifier);
    mouse(QEvent::MouseButtonRelease, position, Qt::AltModifier);
    EXPECT_EQ(state().velocity, 100);
    EXPECT_EQ(slider->property("value").toInt(), 100);
}

TEST_F(MainWindowTest, TheArrowKeysMoveTheSliderUnderThePointerOnly) {
    const KeyEvents right{.evdevCode = KEY_RIGHT, .key = Qt::Key_Right};
    const KeyEvents down{.evdevCode = KEY_DOWN, .key = Qt::Key_Down};
    const auto* slider = find(QStringLiteral("CleanValueSlider"), "label", QStringLiteral("Velocity"));
    right.press(*window_);
    EXPECT_EQ(state().velocity, 100);
    mouse(QEvent::MouseMove, centre(*slider));
    right.press(*window_);
    right.release(*window_);
    EXPECT_EQ(state().velocity, 101);
    down.press(*window_);
    down.release(*window_);
    down.press(*window_);
    down.release(*window_);
    EXPECT_EQ(state().velocity, 99);
    // Keys play meanwhile.
    a_.press(*window_);
    EXPECT_THAT(instrument_.takeMessages(), testing::SizeIs(1));
    mouse(QEvent::MouseMove, centre(*cell(QStringLiteral("A"))));
    right.press(*window_);
    EXPECT_EQ(state().velocity, 99);
}

TEST_F(MainWindowTest, KeysInAnOpenListChooseThereAndPlayNothing) {
    click(*find(QStringLiteral("Picker"), "label", QStringLiteral("Scale")));
    a_.press(*window_);
    a_.release(*window_);
    EXPECT_THAT(instrument_.takeMessages(), IsEmpty());
    KeyEvents{.evdevCode = KEY_DOWN, .key = Qt::Key_Down}.press(*window_);
    enter_.press(*window_);
    QCoreApplication::processEvents();
    EXPECT_EQ(state().scaleName, "Major");
    a_.press(*window_);
    EXPECT_THAT(instrument_.takeMessages(), ElementsAre(ElementsAre(0x90, 60, 100)));
}

TEST_F(MainWindowTest, EscapeClosesAnOpenListWithoutAChoice) {
    click(*find(QStringLiteral("Picker"), "label", QStringLiteral("Root")));
    KeyEvents{.evdevCode = KEY_DOWN, .key = Qt::Key_Down}.press(*window_);
    KeyEvents{.evdevCode = KEY_ESC, .key = Qt::Key_Escape}.press(*window_);
    QCoreApplication::processEvents();
    EXPECT_EQ(state().rootSemitone, 0);
    a_.press(*window_);
    EXPECT_THAT(instrument_.takeMessages(), ElementsAre(ElementsAre(0x90, 60, 100)));
}

TEST_F(MainWindowTest, TheStopButton) {
    a_.press(*window_);
    instrument_.takeMessages();
    click(*find(QStringLiteral("StopButton"), "visible", true));
    EXPECT_EQ(instrument_.takeMessages().size(), 33u);
}

TEST_F(MainWindowTest, TheReadOutsShowTheControllers) {
    a_.press(*window_);
    const auto* panel = find(QStringLiteral("KeyboardPanel"), "statusText", QStringLiteral("Note On C4"));
    ASSERT_NE(panel, nullptr);
    EXPECT_NE(find(QStringLiteral("QQuickText"), "text", QStringLiteral("Note On C4")), nullptr);
    EXPECT_NE(find(QStringLiteral("QQuickText"), "text", QStringLiteral("C4")), nullptr);
}

} // namespace
} // namespace tavro
