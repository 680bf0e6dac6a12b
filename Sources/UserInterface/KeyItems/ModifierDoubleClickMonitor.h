#pragma once

#include "KeyboardInput/ModifierDoubleClickRules.h"

#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtQml/qqmlregistration.h>

class QMouseEvent;

namespace tavro {

/// An invisible area that turns a double click with modifier keys into an action, before the items under it
/// see the second press. Every other click passes.
class ModifierDoubleClickMonitor : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    /// All of these must be held; others may be.
    Q_PROPERTY(Qt::KeyboardModifiers requiredModifier READ requiredModifier WRITE setRequiredModifier NOTIFY
                   requiredModifierChanged)

public:
    explicit ModifierDoubleClickMonitor(QQuickItem* parent = nullptr);
    ~ModifierDoubleClickMonitor() override;

    [[nodiscard]] Qt::KeyboardModifiers requiredModifier() const { return requiredModifier_; }

    void setRequiredModifier(Qt::KeyboardModifiers modifiers);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void requiredModifierChanged();
    /// The double click happened.
    void action();

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void removeMonitor();
    [[nodiscard]] bool consumes(const QMouseEvent& press);

    QPointer<QQuickWindow> window_;
    Qt::KeyboardModifiers requiredModifier_;
    ModifierDoubleClickRules rules_;
    bool hasConsumedPress_ = false;
};

} // namespace tavro
