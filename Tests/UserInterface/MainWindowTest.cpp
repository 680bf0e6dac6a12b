#include "UserInterface/MainWindowLoader.h"

#include "Platform/Headless/KeyEventTranslatorAdapter.h"
#include "UserInterface/Instrument.h"
#include "UserInterface/KeyEvents.h"

#include <QMouseEvent>
#include <QQuickItem>

#include <linux/input-event-codes.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string>& warnings() {
    static std::vector<std::string> all;
    return all;
}

void noteWarning(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type != QtDebugMsg && type != QtInfoMsg) {
        warnings().push_back(text.toStdString());
    }
}

class MainWindowTest : public testing::Test {
protected:
    void SetUp() override {
        warnings().clear();
        previousHandler_ = qInstallMessageHandler(noteWarning);
        ASSERT_TRUE(loader_.load());
        window_ = loader_.window();
        window_->resize(1280, 805);
        QCoreApplication::processEvents();
    }

    void TearDown() override {
        qInstallMessageHandler(previousHandler_);
        EXPECT_THAT(warnings(), IsEmpty());
    }

    /// The items of this type: the file's name, or the class's.
    std::vector<QQuickItem*> items(const QString& type) const {
        std::vector<QQuickItem*> found;
        std::vector<QQuickItem*> waiting{window_->contentItem()};
        while (!waiting.empty()) {
            auto* item = waiting.back();
            waiting.pop_back();
            const auto name = QString::fromLatin1(item->metaObject()->className());
            if (name == type || name.startsWith(type + QStringLiteral("_QML"))) {
                found.push_back(item);
            }
            for (auto* child : item->childItems()) {
                waiting.push_back(child);
            }
        }
        return found;
    }

    /// The one of them whose property has this value; null when there is none.
    QQuickItem* find(const QString& type, const char* property, const QVariant& value) const {
        for (auto* item : items(type)) {
            if (item->property(property) == value) {
                return item;
            }
        }
        return nullptr;
    }

    QQuickItem* cell(const QString& label) const { return find(QStringLiteral("KeyCell"), "label", label); }

    void mouse(QEvent::Type type, QPointF position, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        const bool isRelease = type == QEvent::MouseButtonRelease;
        const bool isMove = type == QEvent::MouseMove;
        QMouseEvent event(
            type, position, position, window_->mapToGlobal(position), isMove ? Qt::NoButton : Qt::LeftButton,
            isRelease ? Qt::MouseButtons(Qt::NoButton) : Qt::MouseButtons(Qt::LeftButton), modifiers);
        event.setTimestamp(timestamp_ += 10);
        QCoreApplication::sendEvent(window_, &event);
    }

    static QPointF centre(const QQuickItem& item) {
        return item.mapToScene(QPointF(item.width() / 2, item.height() / 2));
    }

    void click(const QQuickItem& item) {
        timestamp_ += 10000;
        mouse(QEvent::MouseButtonPress, centre(item));
        mouse(QEvent::MouseButtonRelease, centre(item));
        QCoreApplication::processEvents();
    }

    void type(const QString& text) {
        for (const auto character : text) {
            QKeyEvent event(QEvent::KeyPress, character.toUpper().unicode(), Qt::NoModifier, KEY_1 + 8, 0, 0,
                            QString(character));
            QCoreApplication::sendEvent(window_, &event);
        }
    }

    const PerformanceState& state() const { return instrument_.controller.state(); }

    QtMessageHandler previousHandler_ = nullptr;
    Instrument instrument_;
    const headless::KeyEventTranslatorAdapter translator_;
    MainWindowLoader loader_{instrument_.controller, instrument_.midi, translator_};
    QQuickWindow* window_ = nullptr;
    quint64 timestamp_ = 0;
    const KeyEvents a_{.evdevCode = KEY_A, .key = Qt::Key_A};
    const KeyEvents enter_{.evdevCode = KEY_ENTER, .key = Qt::Key_Return};
};

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
    mouse(QEvent::MouseMove, position + QPointF(200, 0));
    EXPECT_THAT(instrument_.takeMessages(), IsEmpty());
    mouse(QEvent::MouseButtonRelease, position + QPointF(200, 0));
    EXPECT_THAT(instrument_.takeMessages(), ElementsAre(ElementsAre(0x80, 62, 0)));
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

TEST_F(MainWindowTest, ATypedNumberOutOfRangeIsClampedWhenTheFieldIsLeft) {
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
