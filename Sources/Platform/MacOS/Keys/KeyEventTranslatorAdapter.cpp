#include "Platform/MacOS/Keys/KeyEventTranslatorAdapter.h"

#include "Platform/Qt/TypedKey.h"

#include <QKeyEvent>

namespace tavro::macos {

namespace {

HotkeyModifiers modifiersOf(Qt::KeyboardModifiers held) {
    HotkeyModifiers modifiers;
    // On this system Qt calls Command "control" and Control "meta", so that shortcuts are written alike.
    if (held.testFlag(Qt::ControlModifier)) {
        modifiers |= HotkeyModifiers::command;
    }
    if (held.testFlag(Qt::MetaModifier)) {
        modifiers |= HotkeyModifiers::control;
    }
    if (held.testFlag(Qt::AltModifier)) {
        modifiers |= HotkeyModifiers::option;
    }
    if (held.testFlag(Qt::ShiftModifier)) {
        modifiers |= HotkeyModifiers::shift;
    }
    return modifiers;
}

} // namespace

std::optional<KeyEvent> KeyEventTranslatorAdapter::translate(const QKeyEvent& event) const {
    if (TypedKey::isModifier(event)) {
        return std::nullopt;
    }
    return KeyEvent{
        .type = event.type() == QEvent::KeyRelease ? KeyEvent::Type::keyUp : KeyEvent::Type::keyDown,
        .keyCode = event.nativeVirtualKey(),
        .characterIgnoringModifiers = TypedKey::character(event),
        .modifiers = modifiersOf(event.modifiers()),
        .isAutorepeat = event.isAutoRepeat(),
    };
}

} // namespace tavro::macos
