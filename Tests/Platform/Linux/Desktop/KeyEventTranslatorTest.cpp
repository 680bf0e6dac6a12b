#include "Platform/Headless/Keys/KeyEventTranslatorAdapter.h"
#include "Platform/Linux/Desktop/KeyEventTranslatorAdapter.h"

#include "UserInterface/KeyEvents.h"

#include <linux/input-event-codes.h>

#include <gtest/gtest.h>

namespace tavro {
namespace {

/// What both adapters for scan codes have in common.
template <typename Adapter>
class ScanCodeTranslatorTest : public testing::Test {
protected:
    std::optional<KeyEvent> pressed(const KeyEvents& key) const {
        return adapter_.translate(key.make(QEvent::KeyPress));
    }

    std::optional<KeyEvent> released(const KeyEvents& key) const {
        return adapter_.translate(key.make(QEvent::KeyRelease));
    }

    Adapter adapter_;
};

using Adapters = testing::Types<linuxos::KeyEventTranslatorAdapter, headless::KeyEventTranslatorAdapter>;
TYPED_TEST_SUITE(ScanCodeTranslatorTest, Adapters);

TYPED_TEST(ScanCodeTranslatorTest, PressAndReleaseOfALetter) {
    const KeyEvents key{.evdevCode = KEY_Q, .key = Qt::Key_Q};
    EXPECT_EQ(this->pressed(key), (KeyEvent{KeyEvent::Type::keyDown, 12, U'q', {}, false}));
    EXPECT_EQ(this->released(key), (KeyEvent{KeyEvent::Type::keyUp, 12, U'q', {}, false}));
}

TYPED_TEST(ScanCodeTranslatorTest, TheQuestionForAShortcutReadsAsAPress) {
    const auto question = KeyEvents{.evdevCode = KEY_Q, .key = Qt::Key_Q}.make(QEvent::ShortcutOverride);
    EXPECT_EQ(this->adapter_.translate(question), (KeyEvent{KeyEvent::Type::keyDown, 12, U'q', {}, false}));
}

TYPED_TEST(ScanCodeTranslatorTest, OnlyTheReleaseOfAnAutorepeatIsDropped) {
    const KeyEvents key{.evdevCode = KEY_A, .key = Qt::Key_A, .isAutorepeat = true};
    EXPECT_EQ(this->released(key), std::nullopt);
    EXPECT_EQ(this->pressed(key), (KeyEvent{KeyEvent::Type::keyDown, 0, U'a', {}, true}));
}

TYPED_TEST(ScanCodeTranslatorTest, ModifierKeysAreNothing) {
    for (const int key :
         {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_AltGr, Qt::Key_Meta, Qt::Key_Super_L,
          Qt::Key_Super_R, Qt::Key_CapsLock, Qt::Key_NumLock, Qt::Key_ScrollLock, Qt::Key_Mode_switch}) {
        EXPECT_EQ(this->pressed({.evdevCode = KEY_LEFTSHIFT, .key = key}), std::nullopt) << key;
        EXPECT_EQ(this->released({.evdevCode = KEY_LEFTSHIFT, .key = key}), std::nullopt) << key;
    }
}

TYPED_TEST(ScanCodeTranslatorTest, WithoutAScanCodeNoKeyWasPressed) {
    const QKeyEvent event(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, 0, 0, 0);
    EXPECT_EQ(this->adapter_.translate(event), std::nullopt);
}

TYPED_TEST(ScanCodeTranslatorTest, Modifiers) {
    const auto modifiers = [this](Qt::KeyboardModifiers held) {
        return this->pressed({.evdevCode = KEY_A, .key = Qt::Key_A, .modifiers = held})->modifiers;
    };
    EXPECT_EQ(modifiers(Qt::MetaModifier), HotkeyModifiers::command);
    EXPECT_EQ(modifiers(Qt::ControlModifier), HotkeyModifiers::control);
    EXPECT_EQ(modifiers(Qt::AltModifier), HotkeyModifiers::option);
    EXPECT_EQ(modifiers(Qt::ShiftModifier), HotkeyModifiers::shift);
    EXPECT_EQ(modifiers(Qt::KeypadModifier), HotkeyModifiers());
    EXPECT_EQ(modifiers(Qt::MetaModifier | Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier),
              HotkeyModifiers(15));
}

TYPED_TEST(ScanCodeTranslatorTest, WhatAKeyTypes) {
    const auto typed = [this](int key) {
        return this->pressed({.evdevCode = KEY_102ND, .key = key})->characterIgnoringModifiers;
    };
    EXPECT_EQ(typed(Qt::Key_Adiaeresis), U'ä');
    EXPECT_EQ(typed(Qt::Key_ssharp), U'ß');
    EXPECT_EQ(typed(0x0416), U'ж');
    EXPECT_EQ(typed(Qt::Key_Less), U'<');
    EXPECT_EQ(typed(Qt::Key_Space), U' ');
    EXPECT_EQ(typed(Qt::Key_Dead_Circumflex), std::nullopt);
    EXPECT_EQ(typed(Qt::Key_Return), std::nullopt);
    EXPECT_EQ(typed(Qt::Key_unknown), std::nullopt);
    EXPECT_EQ(typed(0), std::nullopt);
    EXPECT_EQ(typed(0x7f), std::nullopt);
}

TEST(LinuxKeyEventTranslator, AltGrCountsAsOption) {
    const linuxos::KeyEventTranslatorAdapter adapter;
    const KeyEvents key{.evdevCode = KEY_Q, .key = Qt::Key_At, .nativeModifiers = 0x80};
    EXPECT_EQ(adapter.translate(key.make(QEvent::KeyPress))->modifiers, HotkeyModifiers::option);
    // Num Lock.
    const KeyEvents locked{.evdevCode = KEY_Q, .key = Qt::Key_Q, .nativeModifiers = 0x10};
    EXPECT_EQ(adapter.translate(locked.make(QEvent::KeyPress))->modifiers, HotkeyModifiers());
}

} // namespace
} // namespace tavro
