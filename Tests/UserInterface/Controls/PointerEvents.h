#pragma once

#include <QObject>
#include <QPointF>
#include <QQuickItem>

namespace tavro {

/// Double clicks as a window system sends them: the presses are near each other in time, too, and the second
/// press is followed by the notice of the double click.
class PointerEvents : public QObject {
    Q_OBJECT

public:
    /// A press and a release, long after everything before. The place is one of the item, the modifiers are
    /// Qt's.
    Q_INVOKABLE void click(QQuickItem* item, double x, double y, int modifiers = Qt::NoModifier);

    /// A second click, near the first.
    Q_INVOKABLE void clickAgain(QQuickItem* item, double x, double y, int modifiers = Qt::NoModifier);

    /// Both.
    Q_INVOKABLE void doubleClick(QQuickItem* item, double x, double y, int modifiers = Qt::NoModifier);

private:
    void send(QEvent::Type type, const QQuickItem& item, QPointF position, int modifiers);

    quint64 timestamp_ = 0;
};

} // namespace tavro
