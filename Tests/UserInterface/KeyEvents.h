#pragma once

#include <QCoreApplication>
#include <QKeyEvent>
#include <QString>

namespace tavro {

/// A key event as the windowing system makes them, its position given by the kernel's key code.
struct KeyEvents {
    quint32 evdevCode;
    int key = 0;
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    bool isAutorepeat = false;
    quint32 nativeModifiers = 0;
    quint32 virtualKey = 0;

    [[nodiscard]] QKeyEvent make(QEvent::Type type) const {
        return {type, key, modifiers, evdevCode + 8, virtualKey, nativeModifiers, QString(), isAutorepeat, 1};
    }

    /// Whether the receiver, or something before it, took the event for itself.
    bool send(QObject& receiver, QEvent::Type type) const {
        auto event = make(type);
        event.ignore();
        QCoreApplication::sendEvent(&receiver, &event);
        return event.isAccepted();
    }

    bool press(QObject& receiver) const { return send(receiver, QEvent::KeyPress); }

    bool release(QObject& receiver) const { return send(receiver, QEvent::KeyRelease); }
};

} // namespace tavro
