#include "Platform/Headless/Keys/KeyEventTranslatorAdapter.h"

#include "Platform/Linux/KeyCodes/EvdevKeyCodes.h"
#include "Platform/Qt/TypedKey.h"

#include <QKeyEvent>

namespace tavro::headless {

namespace {

HotkeyModifiers modifiersOf(Qt::KeyboardModifiers held) {
    HotkeyModifiers modifiers;
    if (held.testFlag(Qt::MetaModifier)) {
        modifiers |= HotkeyModifiers::command;
    }
    if (held.testFlag(Qt::ControlModifier)) {
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
    using linuxos::EvdevKeyCodes;
    const bool isRelease = event.type() == QEvent::KeyRelease;
    if (event.nativeScanCode() < EvdevKeyCodes::scanCodeOffset || TypedKey::isModifier(event) ||
        (isRelease && event.isAutoRepeat())) {
        return std::nullopt;
    }
    return KeyEvent{
        .type = isRelease ? KeyEvent::Type::keyUp : KeyEvent::Type::keyDown,
        .keyCode = EvdevKeyCodes::virtualKeyCode(event.nativeScanCode() - EvdevKeyCodes::scanCodeOffset),
        .characterIgnoringModifiers = TypedKey::character(event),
        .modifiers = modifiersOf(event.modifiers()),
        .isAutorepeat = event.isAutoRepeat(),
    };
}

} // namespace tavro::headless
