#pragma once

#include "KeyboardInput/KeyEventRouter.h"
#include "PlatformInterfaces/Application/KeyEventTranslator.h"

#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtQml/qqmlregistration.h>

class QKeyEvent;

namespace tavro {

/// Watches the keys of the window that it is in, before anything in the window sees them. What a key means
/// is the router's decision, by the fields it has when the event comes: a key takes no way through the
/// scene's scripts.
class KeyboardEventMonitor : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT

public:
    explicit KeyboardEventMonitor(QQuickItem* parent = nullptr);
    ~KeyboardEventMonitor() override;

    /// Gives the keys to the router, as the translator reads them; before that every key passes. Once. Both
    /// must outlive this. The router is told at once whether the window has the keyboard.
    void watchFor(KeyEventRouter& router, const KeyEventTranslator& translator);

    /// Offers a key that the window has not seen yet. See `KeyEventRouter::handleDirectly`.
    [[nodiscard]] bool handleDirectly(const KeyEvent& event);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void installMonitors(QQuickWindow& window);
    void removeMonitors();
    void watchFocusObject(QObject* focusObject);
    void setFocused(bool isFocused);
    [[nodiscard]] KeyEventRouter::Context context() const;
    [[nodiscard]] bool consumes(const QKeyEvent& event);
    [[nodiscard]] bool wouldConsume(const QKeyEvent& event) const;

    KeyEventRouter* router_ = nullptr;
    const KeyEventTranslator* translator_ = nullptr;
    bool isFocused_ = false;
    QPointer<QQuickWindow> window_;
    QPointer<QObject> focusObject_;
};

} // namespace tavro
