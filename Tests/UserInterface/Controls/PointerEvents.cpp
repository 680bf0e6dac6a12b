#include "UserInterface/Controls/PointerEvents.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QQuickWindow>

namespace tavro {

void PointerEvents::click(QQuickItem* item, double x, double y, int modifiers) {
    // The test library's own events stand at times that grow by half a second each.
    constexpr quint64 longTime = 1000000;
    timestamp_ += longTime;
    send(QEvent::MouseButtonPress, *item, {x, y}, modifiers);
    send(QEvent::MouseButtonRelease, *item, {x, y}, modifiers);
}

void PointerEvents::clickAgain(QQuickItem* item, double x, double y, int modifiers) {
    send(QEvent::MouseButtonPress, *item, {x, y}, modifiers);
    send(QEvent::MouseButtonDblClick, *item, {x, y}, modifiers);
    send(QEvent::MouseButtonRelease, *item, {x, y}, modifiers);
}

void PointerEvents::doubleClick(QQuickItem* item, double x, double y, int modifiers) {
    click(item, x, y, modifiers);
    clickAgain(item, x, y, modifiers);
}

void PointerEvents::send(QEvent::Type type, const QQuickItem& item, QPointF position, int modifiers) {
    auto* window = item.window();
    const auto inWindow = item.mapToScene(position);
    const auto buttons = type == QEvent::MouseButtonRelease ? Qt::MouseButtons(Qt::NoButton)
                                                            : Qt::MouseButtons(Qt::LeftButton);
    QMouseEvent event(type, inWindow, inWindow, window->mapToGlobal(inWindow), Qt::LeftButton, buttons,
                      Qt::KeyboardModifiers(QFlag(modifiers)));
    event.setTimestamp(timestamp_ += 10);
    QCoreApplication::sendEvent(window, &event);
}

} // namespace tavro
