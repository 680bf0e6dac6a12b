#include "UserInterface/KeyEvents.h"
#include "UserInterface/KeyItems/MonitoredWindow.h"

#include <QQuickItem>

#include <linux/input-event-codes.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t keyA = 0;
constexpr std::int64_t keyK = 40;
constexpr std::int64_t keyReturn = 36;

class KeyboardMonitorDirectTest : public testing::Test {
protected:
    bool send(KeyEvent::Type type, std::int64_t keyCode) {
        return desk_.monitor->handleDirectly({.type = type,
                                              .keyCode = keyCode,
                                              .characterIgnoringModifiers = {},
                                              .modifiers = {},
                                              .isAutorepeat = false});
    }

    bool press(std::int64_t keyCode) { return send(KeyEvent::Type::keyDown, keyCode); }

    bool release(std::int64_t keyCode) { return send(KeyEvent::Type::keyUp, keyCode); }

    QQuickItem* focusedTextField() {
        auto* item = new QQuickItem(desk_.window.contentItem());
        item->setFlag(QQuickItem::ItemAcceptsInputMethod);
        item->forceActiveFocus();
        return item;
    }

    MonitoredWindow desk_;
    const KeyEvents a_{.evdevCode = KEY_A, .key = Qt::Key_A};
};

TEST_F(KeyboardMonitorDirectTest, AKeyOfThePlayingAreaPlays) {
    EXPECT_TRUE(press(keyA));
    EXPECT_TRUE(release(keyA));
    EXPECT_THAT(desk_.takeLog(), ElementsAre("down a", "up a"));
}

TEST_F(KeyboardMonitorDirectTest, ARepeatPlaysNothingAndGoesNowhere) {
    EXPECT_TRUE(press(keyA));
    EXPECT_TRUE(press(keyA));
    EXPECT_THAT(desk_.takeLog(), ElementsAre("down a"));
}

TEST_F(KeyboardMonitorDirectTest, ThePressHereAndTheReleaseThroughTheWindowAreAPair) {
    press(keyA);
    KeyEvents{.evdevCode = KEY_A, .key = Qt::Key_A, .modifiers = Qt::ControlModifier}.release(desk_.window);
    EXPECT_THAT(desk_.takeLog(), ElementsAre("down a", "up a"));
    a_.press(desk_.window);
    EXPECT_TRUE(release(keyA));
    EXPECT_THAT(desk_.takeLog(), ElementsAre("down a", "up a"));
}

TEST_F(KeyboardMonitorDirectTest, ARepeatThroughTheWindowIsKnownAsOne) {
    press(keyA);
    EXPECT_TRUE(a_.press(desk_.window));
    EXPECT_THAT(desk_.takeLog(), ElementsAre("down a"));
}

TEST_F(KeyboardMonitorDirectTest, ATextFieldsKeysAreLeftToTheWindow) {
    focusedTextField();
    EXPECT_FALSE(press(keyA));
    EXPECT_FALSE(release(keyA));
    EXPECT_THAT(desk_.takeLog(), IsEmpty());
}

TEST_F(KeyboardMonitorDirectTest, TheReleaseOfAKeyHeldWhenATextFieldOpenedComesThroughTheWindow) {
    press(keyA);
    focusedTextField();
    EXPECT_FALSE(release(keyA));
    EXPECT_THAT(desk_.takeLog(), ElementsAre("down a"));
    a_.release(desk_.window);
    EXPECT_THAT(desk_.takeLog(), ElementsAre("up a"));
}

TEST_F(KeyboardMonitorDirectTest, KeysThatDoNotPlayAreLeftToTheWindow) {
    EXPECT_FALSE(press(keyReturn));
    EXPECT_THAT(desk_.takeLog(), IsEmpty());
}

TEST_F(KeyboardMonitorDirectTest, TheHotkeyIsLeftToTheWindow) {
    desk_.router.hotkey.keyCode = keyK;
    EXPECT_FALSE(press(keyK));
    EXPECT_THAT(desk_.takeLog(), IsEmpty());
    KeyEvents{.evdevCode = KEY_K, .key = Qt::Key_K}.press(desk_.window);
    EXPECT_THAT(desk_.takeLog(), ElementsAre("hotkey"));
}

TEST_F(KeyboardMonitorDirectTest, AKeyToBeRecordedIsLeftToTheWindow) {
    desk_.router.isRecordingHotkey = true;
    EXPECT_FALSE(press(keyK));
    EXPECT_THAT(desk_.takeLog(), IsEmpty());
    KeyEvents{.evdevCode = KEY_K, .key = Qt::Key_K}.press(desk_.window);
    EXPECT_THAT(desk_.takeLog(), ElementsAre("recorded k 40 0"));
}

TEST_F(KeyboardMonitorDirectTest, OutsideAWindowNothingPlays) {
    desk_.monitor->setParentItem(nullptr);
    desk_.takeLog();
    EXPECT_FALSE(press(keyA));
    EXPECT_THAT(desk_.takeLog(), IsEmpty());
    desk_.monitor->setParentItem(desk_.window.contentItem());
}

} // namespace
} // namespace tavro
