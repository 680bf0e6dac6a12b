#include "UserInterface/KeyItems/ArrowKeyMonitor.h"

#include "UserInterface/KeyItems/FocusedItem.h"

#include <QKeyEvent>

namespace tavro {

ArrowKeyMonitor::~ArrowKeyMonitor() {
    watch(nullptr);
}

void ArrowKeyMonitor::setListening(bool isListening) {
    if (isListening_ == isListening) {
        return;
    }
    isListening_ = isListening;
    // Filters are asked from the last one to the first, so this one comes before that of the playing keys.
    watch(isListening ? window() : nullptr);
    Q_EMIT isListeningChanged();
}

void ArrowKeyMonitor::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange) {
        watch(isListening_ ? data.window : nullptr);
    }
}

void ArrowKeyMonitor::watch(QQuickWindow* window) {
    if (watched_ != nullptr) {
        watched_->removeEventFilter(this);
    }
    watched_ = window;
    if (watched_ != nullptr) {
        watched_->installEventFilter(this);
    }
}

bool ArrowKeyMonitor::eventFilter(QObject* watched, QEvent* event) {
    if (watched != watched_ || event->type() != QEvent::KeyPress) {
        return false;
    }
    const int direction = directionOf(*static_cast<QKeyEvent*>(event));
    if (direction == 0) {
        return false;
    }
    event->accept();
    Q_EMIT step(direction);
    return true;
}

int ArrowKeyMonitor::directionOf(const QKeyEvent& event) const {
    const auto focus = FocusedItem::of(watched_);
    if (focus.liesInPopup || focus.isEditingText || (event.modifiers() & ~Qt::KeypadModifier) != 0) {
        return 0;
    }
    switch (event.key()) {
    case Qt::Key_Right:
    case Qt::Key_Up:
        return 1;
    case Qt::Key_Left:
    case Qt::Key_Down:
        return -1;
    default:
        return 0;
    }
}

} // namespace tavro
