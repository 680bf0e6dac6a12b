#include "Platform/Linux/X11/PendingDelivery.h"

#include <QCoreApplication>
#include <QEvent>

#include <limits>

namespace tavro::x11 {

void PendingDelivery::begin() {
    if (isUnderWay_) {
        return;
    }
    isUnderWay_ = true;
    // Qt delivers the window system's events in the turn of the event loop that reads them, and posted ones
    // after them by their priority: what comes last of all has nothing before it any more. That the loop is
    // about to block says less, because with glib's loop it is said before every turn.
    QCoreApplication::postEvent(this, new QEvent(QEvent::User), std::numeric_limits<int>::min());
}

bool PendingDelivery::event(QEvent* event) {
    if (event->type() != QEvent::User) {
        return QObject::event(event);
    }
    isUnderWay_ = false;
    if (onArrival_) {
        onArrival_();
    }
    return true;
}

} // namespace tavro::x11
