#include "Platform/Qt/TypedKey.h"

#include <QChar>
#include <QKeyEvent>

namespace tavro {

bool TypedKey::isModifier(const QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Meta:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_ScrollLock:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_Mode_switch:
    case Qt::Key_Multi_key:
        return true;
    default:
        return false;
    }
}

std::optional<Character> TypedKey::character(const QKeyEvent& event) {
    // Qt names a key by the upper-case character it types; the keys that type none are numbered from here on.
    constexpr int firstUntypable = 0x01000000;
    if (event.key() <= 0 || event.key() >= firstUntypable) {
        return std::nullopt;
    }
    const auto typed = static_cast<Character>(event.key());
    if (!QChar::isPrint(typed)) {
        return std::nullopt;
    }
    return lowercased(typed);
}

} // namespace tavro
