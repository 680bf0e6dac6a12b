#include "Platform/MacOS/Keys/KeyEventTranslatorAdapter.h"

#include "UserInterface/KeyEvents.h"

#include <gtest/gtest.h>

namespace tavro {
namespace {

TEST(MacOSKeyEventTranslator, TakesTheVirtualKeyCode) {
    const macos::KeyEventTranslatorAdapter adapter;
    const KeyEvents key{.evdevCode = 77, .key = Qt::Key_Z, .virtualKey = 16};
    EXPECT_EQ(adapter.translate(key.make(QEvent::KeyPress)),
              (KeyEvent{KeyEvent::Type::keyDown, 16, U'z', {}, false}));
    EXPECT_EQ(adapter.translate(key.make(QEvent::KeyRelease)),
              (KeyEvent{KeyEvent::Type::keyUp, 16, U'z', {}, false}));
}

TEST(MacOSKeyEventTranslator, QtCallsCommandControlThere) {
    const macos::KeyEventTranslatorAdapter adapter;
    const auto modifiers = [&adapter](Qt::KeyboardModifiers held) {
        return adapter
            .translate(KeyEvents{.evdevCode = 0, .key = Qt::Key_A, .modifiers = held}.make(QEvent::KeyPress))
            ->modifiers;
    };
    EXPECT_EQ(modifiers(Qt::ControlModifier), HotkeyModifiers::command);
    EXPECT_EQ(modifiers(Qt::MetaModifier), HotkeyModifiers::control);
    EXPECT_EQ(modifiers(Qt::AltModifier), HotkeyModifiers::option);
    EXPECT_EQ(modifiers(Qt::ShiftModifier), HotkeyModifiers::shift);
}

TEST(MacOSKeyEventTranslator, ModifierKeysAreNothing) {
    const macos::KeyEventTranslatorAdapter adapter;
    const KeyEvents key{.evdevCode = 0, .key = Qt::Key_Shift, .virtualKey = 56};
    EXPECT_EQ(adapter.translate(key.make(QEvent::KeyPress)), std::nullopt);
}

} // namespace
} // namespace tavro
