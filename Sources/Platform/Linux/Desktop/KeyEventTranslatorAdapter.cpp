#include "Platform/Linux/Desktop/KeyEventTranslatorAdapter.h"

#include "Platform/Linux/KeyCodes/EvdevKeyCodes.h"
#include "Platform/Qt/TypedKey.h"

#include <QKeyEvent>

namespace tavro::linuxos {

namespace {

HotkeyModifiers modifiersOf(const QKeyEvent& event) {
    // AltGr reaches Qt as no modifier of its own; both window systems report it in the fifth one.
    constexpr quint32 fifthModifier = 0x80;
    HotkeyModifiers modifiers;
    if (event.modifiers().testFlag(Qt::MetaModifier)) {
        modifiers |= HotkeyModifiers::command;
    }
    if (event.modifiers().testFlag(Qt::ControlModifier)) {
        modifiers |= HotkeyModifiers::control;
    }
    if (event.modifiers().testFlag(Qt::AltModifier) || (event.nativeModifiers() & fifthModifier) != 0) {
        modifiers |= HotkeyModifiers::option;
    }
    if (event.modifiers().testFlag(Qt::ShiftModifier)) {
        modifiers |= HotkeyModifiers::shift;
    }
    return modifiers;
}

} // namespace

std::optional<KeyEvent> KeyEventTranslatorAdapter::translate(const QKeyEvent& event) const {
    if (event.nativeScanCode() < EvdevKeyCodes::scanCodeOffset || TypedKey::isModifier(event)) {
        return std::nullopt;
    }
    const bool isRelease = event.type() == QEvent::KeyRelease;
    // An autorepeat comes as release and press; the finger has released nothing.
    if (isRelease && event.isAutoRepeat()) {
        return std::nullopt;
    }
    return KeyEvent{
        .type = isRelease ? KeyEvent::Type::keyUp : KeyEvent::Type::keyDown,
        .keyCode = EvdevKeyCodes::virtualKeyCode(event.nativeScanCode() - EvdevKeyCodes::scanCodeOffset),
        .characterIgnoringModifiers = TypedKey::character(event),
        .modifiers = modifiersOf(event),
        .isAutorepeat = event.isAutoRepeat(),
        .time = static_cast<std::uint32_t>(event.timestamp()),
    };
}

} // namespace tavro::linuxos
