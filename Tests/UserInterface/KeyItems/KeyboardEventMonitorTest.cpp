#include "UserInterface/KeyEvents.h"
#include "UserInterface/KeyItems/MonitoredWindow.h"

#include <linux/input-event-codes.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class KeyboardEventMonitorTest : public testing::Test {
protected:
    MonitoredWindow desk_;
    const KeyEvents a_{.evdevCode = KEY_A, .key = Qt::Key_A};
};

TEST_F(KeyboardEventMonitorTest, APressAndAReleaseArePlayedAndConsumed) {
    EXPECT_TRUE(a_.press(desk_.window));
    EXPECT_TRUE(a_.release(desk_.window));
    EXPECT_THAT(desk_.takeLog(), ElementsAre("down a", "up a"));
}

TEST_F(KeyboardEventMonitorTest, AHeldKeyPlaysOnce) {
    auto repeated = a_;
    repeated.isAutorepeat = true;
    a_.press(desk_.window);
    for (int repeat = 0; repeat < 3; ++repeat) {
        EXPECT_FALSE(repeated.release(desk_.window));
        EXPECT_TRUE(repeated.press(desk_.window));
    }
    a_.release(desk_.window);
    EXPECT_THAT(desk_.takeLog(), ElementsAre("down a", "up a"));
}

TEST_F(KeyboardEventMonitorTest, ThePositionCountsNotWhatTheKeyTypes) {
    KeyEvents{.evdevCode = KEY_Y, .key = Qt::Key_Y}.press(desk_.window);
    desk_.router.layoutKind = KeyboardLayoutKind::qwerty;
    KeyEvents{.evdevCode = KEY_Z, .key = Qt::Key_Y}.press(desk_.window);
    EXPECT_THAT(desk_.takeLog(), ElementsAre("down z", "down z"));
}

TEST_F(KeyboardEventMonitorTest, AKeyThatDoesNotPlayIsSwallowed) {
    EXPECT_TRUE((KeyEvents{.evdevCode = KEY_TAB, .key = Qt::Key_Tab}.press(desk_.window)));
    EXPECT_THAT(desk_.takeLog(), IsEmpty());
}

TEST_F(KeyboardEventMonitorTest, ShortcutsPassAndShiftAlonePlays) {
    for (const auto modifier : {Qt::AltModifier, Qt::ControlModifier, Qt::MetaModifier}) {
        const KeyEvents shortcut{.evdevCode = KEY_E, .key = Qt::Key_E, .modifiers = modifier};
        EXPECT_FALSE(shortcut.press(desk_.window));
        EXPECT_FALSE(shortcut.release(desk_.window));
    }
    EXPECT_THAT(desk_.takeLog(), IsEmpty());
    EXPECT_TRUE((
        KeyEvents{.evdevCode = KEY_E, .key = Qt::Key_E, .modifiers = Qt::ShiftModifier}.press(desk_.window)));
    EXPECT_THAT(desk_.takeLog(), ElementsAre("down e"));
}

TEST_F(KeyboardEventMonitorTest, RecordingTakesAnyKeyWithItsModifiers) {
    desk_.router.isRecordingHotkey = true;
    EXPECT_TRUE((KeyEvents{.evdevCode = KEY_K, .key = Qt::Key_K, .modifiers = Qt::ControlModifier}.press(
        desk_.window)));
    EXPECT_TRUE((KeyEvents{.evdevCode = KEY_102ND, .key = Qt::Key_Less}.press(desk_.window)));
    EXPECT_TRUE((KeyEvents{.evdevCode = KEY_F5, .key = Qt::Key_F5}.press(desk_.window)));
    EXPECT_THAT(desk_.takeLog(), ElementsAre("recorded k 40 2", "recorded ^ 10 0", "recorded ^ 96 0"));
    desk_.router.isRecordingHotkey = false;
    a_.press(desk_.window);
    EXPECT_THAT(desk_.takeLog(), ElementsAre("down a"));
}

TEST_F(KeyboardEventMonitorTest, TheHotkeyIsTheRoutersOfTheMoment) {
    const KeyEvents grave{.evdevCode = KEY_GRAVE, .key = Qt::Key_QuoteLeft};
    EXPECT_TRUE(grave.press(desk_.window));
    EXPECT_THAT(desk_.takeLog(), ElementsAre("hotkey"));

    desk_.router.hotkey = {U'k', 40, HotkeyModifiers::control};
    const KeyEvents controlK{.evdevCode = KEY_K, .key = Qt::Key_K, .modifiers = Qt::ControlModifier};
    EXPECT_TRUE(controlK.press(desk_.window));
    controlK.release(desk_.window);
    KeyEvents{.evdevCode = KEY_K, .key = Qt::Key_K}.press(desk_.window);
    EXPECT_THAT(desk_.takeLog(), ElementsAre("hotkey", "down k"));

    desk_.router.hotkey = {U'l', std::nullopt, {}};
    KeyEvents{.evdevCode = KEY_L, .key = Qt::Key_L}.press(desk_.window);
    EXPECT_THAT(desk_.takeLog(), ElementsAre("hotkey"));
}

TEST_F(KeyboardEventMonitorTest, AKeyOfOursIsKeptFromTheShortcuts) {
    EXPECT_TRUE(a_.send(desk_.window, QEvent::ShortcutOverride));
    const KeyEvents controlK{.evdevCode = KEY_K, .key = Qt::Key_K, .modifiers = Qt::ControlModifier};
    EXPECT_FALSE(controlK.send(desk_.window, QEvent::ShortcutOverride));
    desk_.router.isRecordingHotkey = true;
    EXPECT_TRUE(controlK.send(desk_.window, QEvent::ShortcutOverride));
    // Only the question was asked; the key itself comes later.
    EXPECT_THAT(desk_.takeLog(), IsEmpty());
}

TEST_F(KeyboardEventMonitorTest, WithoutARouterEverythingPasses) {
    QQuickWindow window;
    KeyboardEventMonitor monitor(window.contentItem());
    EXPECT_FALSE(a_.press(window));
    EXPECT_FALSE(a_.send(window, QEvent::ShortcutOverride));
    EXPECT_FALSE(monitor.handleDirectly({}));
    EXPECT_THAT(desk_.takeLog(), IsEmpty());
}

TEST_F(KeyboardEventMonitorTest, KeysOfAnotherWindowAreNotOurs) {
    QQuickWindow other;
    EXPECT_FALSE(a_.press(other));
    EXPECT_THAT(desk_.takeLog(), IsEmpty());
}

} // namespace
} // namespace tavro
