#include "UserInterface/KeyItems/ModifierDoubleClickMonitor.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QStyleHints>

namespace tavro {

namespace {

ModifierDoubleClickRules::Nearness nearnessOfTheDesktop() {
    const auto* hints = QGuiApplication::styleHints();
    return {.milliseconds = hints->mouseDoubleClickInterval(),
            .distance = static_cast<double>(hints->mouseDoubleClickDistance())};
}

} // namespace

ModifierDoubleClickMonitor::ModifierDoubleClickMonitor(QQuickItem* parent) : rules_(nearnessOfTheDesktop()) {
    // Not by the base class, whose notice of the window would come before this part can hear it.
    setParent(parent);
    setParentItem(parent);
}

ModifierDoubleClickMonitor::~ModifierDoubleClickMonitor() {
    removeMonitor();
}

void ModifierDoubleClickMonitor::setRequiredModifier(Qt::KeyboardModifiers modifiers) {
    if (requiredModifier_ != modifiers) {
        requiredModifier_ = modifiers;
        rules_.requiredModifiers = static_cast<std::uint32_t>(modifiers.toInt());
        Q_EMIT requiredModifierChanged();
    }
}

void ModifierDoubleClickMonitor::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange) {
        removeMonitor();
        window_ = data.window;
        if (window_ != nullptr) {
            window_->installEventFilter(this);
        }
    }
}

void ModifierDoubleClickMonitor::removeMonitor() {
    if (window_ != nullptr) {
        window_->removeEventFilter(this);
    }
    window_ = nullptr;
}

bool ModifierDoubleClickMonitor::eventFilter(QObject* watched, QEvent* event) {
    if (watched != window_) {
        return false;
    }
    if (event->type() == QEvent::MouseButtonPress) {
        hasConsumedPress_ = consumes(*static_cast<QMouseEvent*>(event));
        return hasConsumedPress_;
    }
    // It accompanies the second press, and would reach the items below without it.
    return event->type() == QEvent::MouseButtonDblClick && hasConsumedPress_;
}

bool ModifierDoubleClickMonitor::consumes(const QMouseEvent& press) {
    if (press.button() != Qt::LeftButton) {
        return false;
    }
    const auto position = mapFromScene(press.scenePosition());
    const bool isDue =
        rules_.isDoubleClick({.milliseconds = static_cast<std::int64_t>(press.timestamp()),
                              .x = position.x(),
                              .y = position.y(),
                              .isInside = isVisible() && contains(position),
                              .modifiers = static_cast<std::uint32_t>(press.modifiers().toInt())});
    if (isDue) {
        Q_EMIT action();
    }
    return isDue;
}

} // namespace tavro
