#include "ApplicationShell/MainMenu.h"
#include "Platform/Headless/ApplicationVisibilityAdapter.h"
#include "Platform/Headless/Keys/KeyEventTranslatorAdapter.h"
#include "UserInterface/FocusedTextField.h"
#include "UserInterface/KeyEvents.h"
#include "UserInterface/KeyItems/KeyboardEventMonitor.h"
#include "UserInterface/MainMenuPresenter.h"
#include "UserInterface/SceneModule.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <linux/input-event-codes.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto scene = R"(
import QtQuick
import QtQuick.Templates as T
import Tavro

T.ApplicationWindow {
    id: window

    required property MainMenuPresenter menu

    width: 640
    height: 700
    visible: true

    Item {
        anchors.fill: parent
        focus: true

        KeyboardEventMonitor {}
        TextInput { objectName: "field"; y: 600; width: 100; height: 20; text: "64" }
        MainMenuButton { objectName: "button"; menu: window.menu; x: 100; y: 16 }
    }
}
)";

/// The button in a window with a text field and a keyboard that plays.
class MainMenuButtonTest : public testing::Test {
protected:
    void SetUp() override {
        visibility_.isPossible = true;
        SceneModule::makeAvailable();
        engine_.setInitialProperties({{QStringLiteral("menu"), QVariant::fromValue(&presenter_)}});
        engine_.loadData(scene);
        ASSERT_FALSE(engine_.rootObjects().isEmpty());
        window_ = qobject_cast<QQuickWindow*>(engine_.rootObjects().front());
        button_ = window_->findChild<QQuickItem*>(QStringLiteral("button"));
        field_ = window_->findChild<QQuickItem*>(QStringLiteral("field"));
        auto* monitor = window_->findChild<KeyboardEventMonitor*>();
        ASSERT_TRUE(button_ != nullptr && field_ != nullptr && monitor != nullptr);
        router_.onKeyDown = [this](Character key) { calls_.push_back("play " + toUtf8(key)); };
        monitor->watchFor(router_, translator_);
        window_->requestActivate();
        QCoreApplication::processEvents();
        ASSERT_EQ(QGuiApplication::focusWindow(), window_);
    }

    void tap(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(window_, key, modifiers);
        QCoreApplication::processEvents();
    }

    void clickButton() {
        const auto place = button_->mapToScene(QPointF(20, 20)).toPoint();
        QTest::mouseClick(window_, Qt::LeftButton, Qt::NoModifier, place);
        QCoreApplication::processEvents();
    }

    [[nodiscard]] bool isOpen() const { return button_->property("isOpen").toBool(); }

    /// The line of the open list with this text; null when it is not there.
    QQuickItem* line(const QString& text) const {
        std::vector<QQuickItem*> waiting{window_->contentItem()};
        while (!waiting.empty()) {
            auto* item = waiting.back();
            waiting.pop_back();
            const auto entry = item->property("entry").toMap();
            if (!entry.isEmpty() && entry[QStringLiteral("text")] == text) {
                return item;
            }
            for (auto* child : item->childItems()) {
                waiting.push_back(child);
            }
        }
        return nullptr;
    }

    void click(const QQuickItem& item) {
        const auto place = item.mapToScene(QPointF(item.width() / 2, item.height() / 2)).toPoint();
        QTest::mouseClick(window_, Qt::LeftButton, Qt::NoModifier, place);
        QCoreApplication::processEvents();
    }

    void edit() {
        field_->forceActiveFocus();
        QMetaObject::invokeMethod(field_, "deselect");
        QCoreApplication::processEvents();
    }

    [[nodiscard]] QString text() const { return field_->property("text").toString(); }

    std::vector<std::string> takeCalls() { return std::exchange(calls_, {}); }

    std::vector<std::string> calls_;
    headless::ApplicationVisibilityAdapter visibility_;
    const headless::KeyEventTranslatorAdapter translator_;
    KeyEventRouter router_;
    FocusedTextField textEditing_;
    MainMenu menu_{visibility_,
                   textEditing_,
                   {.checkForUpdates = {},
                    .quit = [this] { calls_.emplace_back("quit"); },
                    .closeWindow = [this] { calls_.emplace_back("close"); },
                    .minimizeWindow = [this] { calls_.emplace_back("minimize"); }}};
    MainMenuPresenter presenter_{menu_, true};
    QQmlApplicationEngine engine_;
    QQuickWindow* window_ = nullptr;
    QQuickItem* button_ = nullptr;
    QQuickItem* field_ = nullptr;
    const KeyEvents a_{.evdevCode = KEY_A, .key = Qt::Key_A};
};

TEST_F(MainMenuButtonTest, shortcutsWorkWithTheMenuClosed) {
    tap(Qt::Key_Q, Qt::ControlModifier);
    tap(Qt::Key_W, Qt::ControlModifier);
    tap(Qt::Key_M, Qt::ControlModifier);
    EXPECT_THAT(takeCalls(), ElementsAre("quit", "close", "minimize"));
    tap(Qt::Key_H, Qt::ControlModifier);
    tap(Qt::Key_H, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_THAT(visibility_.calls, ElementsAre("hide", "hide others"));
}

TEST_F(MainMenuButtonTest, otherCombinationsAreNoShortcuts) {
    tap(Qt::Key_Q);
    tap(Qt::Key_Q, Qt::ControlModifier | Qt::ShiftModifier);
    tap(Qt::Key_M, Qt::AltModifier);
    EXPECT_THAT(takeCalls(), IsEmpty());
}

TEST_F(MainMenuButtonTest, shortcutsOfDisabledEntriesDoNothing) {
    visibility_.isPossible = false;
    presenter_.refresh();
    tap(Qt::Key_H, Qt::ControlModifier);
    EXPECT_THAT(visibility_.calls, IsEmpty());
}

TEST_F(MainMenuButtonTest, arrowsAndReturnChoose) {
    clickButton();
    ASSERT_TRUE(isOpen());
    tap(Qt::Key_Down);
    EXPECT_TRUE(line(QStringLiteral("Hide TAVRO"))->property("isCurrent").toBool());
    // Over the line between the groups, and from the last of the first menu over all that is disabled.
    for (int step = 0; step < 3; ++step) {
        tap(Qt::Key_Down);
    }
    EXPECT_TRUE(line(QStringLiteral("Quit TAVRO"))->property("isCurrent").toBool());
    tap(Qt::Key_Down);
    EXPECT_TRUE(line(QStringLiteral("Close Window"))->property("isCurrent").toBool());
    tap(Qt::Key_Return);
    EXPECT_FALSE(isOpen());
    EXPECT_THAT(takeCalls(), ElementsAre("close"));
}

TEST_F(MainMenuButtonTest, upBeginsAtTheEndAndStopsAtTheBeginning) {
    clickButton();
    tap(Qt::Key_Up);
    EXPECT_TRUE(line(QStringLiteral("Minimize"))->property("isCurrent").toBool());
    tap(Qt::Key_Down);
    EXPECT_TRUE(line(QStringLiteral("Minimize"))->property("isCurrent").toBool());
    for (int step = 0; step < 20; ++step) {
        tap(Qt::Key_Up);
    }
    EXPECT_TRUE(line(QStringLiteral("Hide TAVRO"))->property("isCurrent").toBool());
}

TEST_F(MainMenuButtonTest, returnWithoutAChoiceKeepsItOpen) {
    clickButton();
    tap(Qt::Key_Return);
    EXPECT_TRUE(isOpen());
    EXPECT_THAT(takeCalls(), IsEmpty());
    EXPECT_THAT(visibility_.calls, IsEmpty());
}

TEST_F(MainMenuButtonTest, escapeAndAnotherClickClose) {
    clickButton();
    tap(Qt::Key_Escape);
    EXPECT_FALSE(isOpen());
    clickButton();
    ASSERT_TRUE(isOpen());
    clickButton();
    EXPECT_FALSE(isOpen());
    EXPECT_THAT(takeCalls(), IsEmpty());
}

TEST_F(MainMenuButtonTest, shortcutsWorkWithTheMenuOpenAndCloseIt) {
    clickButton();
    tap(Qt::Key_M, Qt::ControlModifier);
    EXPECT_FALSE(isOpen());
    EXPECT_THAT(takeCalls(), ElementsAre("minimize"));
}

TEST_F(MainMenuButtonTest, keysPlayBesideTheMenuAndNotInIt) {
    a_.press(*window_);
    a_.release(*window_);
    EXPECT_THAT(takeCalls(), ElementsAre("play a"));
    clickButton();
    a_.press(*window_);
    a_.release(*window_);
    EXPECT_THAT(takeCalls(), IsEmpty());
    tap(Qt::Key_Escape);
    a_.press(*window_);
    EXPECT_THAT(takeCalls(), ElementsAre("play a"));
}

TEST_F(MainMenuButtonTest, editEntriesAreDisabledWithoutAField) {
    clickButton();
    EXPECT_FALSE(line(QStringLiteral("Paste"))->isEnabled());
    EXPECT_TRUE(line(QStringLiteral("Minimize"))->isEnabled());
    click(*line(QStringLiteral("Paste")));
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(text(), QStringLiteral("64"));
}

TEST_F(MainMenuButtonTest, editEntriesActOnTheFieldThatIsEdited) {
    edit();
    clickButton();
    ASSERT_TRUE(isOpen());
    EXPECT_TRUE(field_->hasActiveFocus());
    click(*line(QStringLiteral("Select All")));
    EXPECT_EQ(field_->property("selectedText").toString(), QStringLiteral("64"));
    clickButton();
    click(*line(QStringLiteral("Cut")));
    EXPECT_EQ(text(), QString());
    clickButton();
    click(*line(QStringLiteral("Undo")));
    EXPECT_EQ(text(), QStringLiteral("64"));
    clickButton();
    click(*line(QStringLiteral("Redo")));
    EXPECT_EQ(text(), QString());
    clickButton();
    click(*line(QStringLiteral("Paste")));
    EXPECT_EQ(text(), QStringLiteral("64"));
    EXPECT_TRUE(field_->hasActiveFocus());
}

TEST_F(MainMenuButtonTest, editShortcutsActOnceOnTheField) {
    edit();
    tap(Qt::Key_A, Qt::ControlModifier);
    tap(Qt::Key_C, Qt::ControlModifier);
    tap(Qt::Key_V, Qt::ControlModifier);
    tap(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(text(), QStringLiteral("6464"));
    tap(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(text(), QStringLiteral("64"));
    tap(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(text(), QStringLiteral("6464"));
    tap(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_THAT(takeCalls(), ElementsAre("quit"));
}

TEST_F(MainMenuButtonTest, showsTheKeysBesideTheText) {
    const auto entries = presenter_.entries();
    std::vector<std::string> lines;
    for (const auto& one : entries) {
        const auto entry = one.toMap();
        lines.push_back(entry[QStringLiteral("text")].toString().toStdString() + "|" +
                        entry[QStringLiteral("shortcut")].toString().toStdString());
    }
    EXPECT_THAT(lines, ElementsAre("TAVRO|", "Hide TAVRO|Ctrl+H", "Hide Others|Ctrl+Alt+H", "Show All|", "|",
                                   "Quit TAVRO|Ctrl+Q", "Edit|", "Undo|Ctrl+Z", "Redo|Ctrl+Shift+Z", "|",
                                   "Cut|Ctrl+X", "Copy|Ctrl+C", "Paste|Ctrl+V", "Select All|Ctrl+A",
                                   "Window|", "Close Window|Ctrl+W", "Minimize|Ctrl+M"));
}

TEST_F(MainMenuButtonTest, readersAreToldWhatIsThere) {
    clickButton();
    auto* button = QAccessible::queryAccessibleInterface(button_);
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->text(QAccessible::Name), QStringLiteral("Menu"));
    auto* quit = QAccessible::queryAccessibleInterface(line(QStringLiteral("Quit TAVRO")));
    ASSERT_NE(quit, nullptr);
    EXPECT_EQ(quit->role(), QAccessible::MenuItem);
    EXPECT_EQ(quit->text(QAccessible::Name), QStringLiteral("Quit TAVRO"));
}

} // namespace
} // namespace tavro
