#include "UserInterface/KeyEvents.h"
#include "UserInterface/KeyItems/MonitoredWindow.h"

#include <QFocusEvent>
#include <QQuickItem>

#include <linux/input-event-codes.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class KeyboardMonitorFocusTest : public testing::Test {
protected:
    KeyboardMonitorFocusTest() {
        desk_.window.show();
        desk_.window.requestActivate();
        QCoreApplication::processEvents();
        desk_.log.clear();
    }

    void sendFocus(QEvent::Type type) {
        QFocusEvent event(type);
        QCoreApplication::sendEvent(&desk_.window, &event);
    }

    /// Has the keyboard, and takes text as a text field does or not.
    QQuickItem* focusedItem(bool takesText) {
        auto* item = new QQuickItem(desk_.window.contentItem());
        item->setFlag(QQuickItem::ItemAcceptsInputMethod, takesText);
        item->forceActiveFocus();
        return item;
    }

    MonitoredWindow desk_;
    const KeyEvents a_{.evdevCode = KEY_A, .key = Qt::Key_A};
};

TEST_F(KeyboardMonitorFocusTest, EnteringAWindowGivesTheKeysAndLeavingItTakesThem) {
    desk_.monitor->setParentItem(nullptr);
    EXPECT_THAT(desk_.takeLog(), ElementsAre("no focus"));
    EXPECT_FALSE(a_.press(desk_.window));

    QQuickWindow other;
    desk_.monitor->setParentItem(other.contentItem());
    EXPECT_THAT(desk_.takeLog(), ElementsAre("focus"));
    EXPECT_FALSE(a_.press(desk_.window));
    EXPECT_TRUE(a_.press(other));
    EXPECT_THAT(desk_.takeLog(), ElementsAre("down a"));
    desk_.monitor->setParentItem(desk_.window.contentItem());
}

TEST_F(KeyboardMonitorFocusTest, ARouterThatComesLateIsToldHowThingsStandAndThatTheWindowGoes) {
    std::vector<bool> told;
    KeyEventRouter router;
    router.onFocusChanged = [&told](bool isFocused) { told.push_back(isFocused); };
    {
        QQuickWindow window;
        auto* monitor = new KeyboardEventMonitor(window.contentItem());
        monitor->watchFor(router, desk_.translator);
        EXPECT_THAT(told, ElementsAre(true));
    }
    EXPECT_THAT(told, ElementsAre(true, false));
}

TEST_F(KeyboardMonitorFocusTest, ATextFieldEndsTheRecording) {
    desk_.router.isRecordingHotkey = true;
    desk_.router.onRecordingInterrupted = [this] { desk_.log.emplace_back("interrupted"); };
    focusedItem(false);
    EXPECT_THAT(desk_.takeLog(), IsEmpty());
    focusedItem(true);
    EXPECT_THAT(desk_.takeLog(), ElementsAre("interrupted"));
}

TEST_F(KeyboardMonitorFocusTest, LosingTheKeyboardForgetsTheHeldKeys) {
    a_.press(desk_.window);
    sendFocus(QEvent::FocusOut);
    EXPECT_THAT(desk_.takeLog(), ElementsAre("down a", "no focus"));
    sendFocus(QEvent::FocusIn);
    EXPECT_THAT(desk_.takeLog(), ElementsAre("focus"));
    // Released elsewhere meanwhile: with Alt it is no key of ours, and nothing is held any more.
    KeyEvents{.evdevCode = KEY_A, .key = Qt::Key_A, .modifiers = Qt::AltModifier}.release(desk_.window);
    EXPECT_THAT(desk_.takeLog(), IsEmpty());
}

TEST_F(KeyboardMonitorFocusTest, ATextFieldGetsItsKeys) {
    focusedItem(true);
    ASSERT_NE(desk_.window.activeFocusItem(), nullptr);
    EXPECT_FALSE(a_.press(desk_.window));
    EXPECT_FALSE(a_.release(desk_.window));
    EXPECT_THAT(desk_.takeLog(), IsEmpty());
}

TEST_F(KeyboardMonitorFocusTest, AnItemThatTakesNoTextDoesNotGetThem) {
    focusedItem(false);
    EXPECT_TRUE(a_.press(desk_.window));
    EXPECT_THAT(desk_.takeLog(), ElementsAre("down a"));
}

TEST_F(KeyboardMonitorFocusTest, AKeyHeldWhenATextFieldOpensIsStillReleased) {
    a_.press(desk_.window);
    focusedItem(true);
    EXPECT_FALSE(a_.release(desk_.window));
    EXPECT_THAT(desk_.takeLog(), ElementsAre("down a", "up a"));
}

TEST_F(KeyboardMonitorFocusTest, TheQuestionForAShortcutIsAnsweredWhereverTheFocusIs) {
    desk_.router.hotkey = {U'k', 40, HotkeyModifiers::control};
    const KeyEvents hotkey{.evdevCode = KEY_K, .key = Qt::Key_K, .modifiers = Qt::ControlModifier};
    auto* first = focusedItem(false);
    EXPECT_TRUE(hotkey.send(*first, QEvent::ShortcutOverride));
    auto* second = focusedItem(false);
    EXPECT_TRUE(hotkey.send(*second, QEvent::ShortcutOverride));
    EXPECT_FALSE(hotkey.send(*first, QEvent::ShortcutOverride));
    EXPECT_THAT(desk_.takeLog(), IsEmpty());
}

} // namespace
} // namespace tavro
