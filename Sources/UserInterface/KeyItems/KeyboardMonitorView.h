#pragma once

#include "KeyboardInput/KeyEventRouter.h"
#include "PlatformInterfaces/Application/KeyEventTranslator.h"

#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>

#include <functional>

class QKeyEvent;

namespace tavro {

/// Watches the keys of the window that it is in, before anything in the window sees them. What a key means
/// is the router's decision, by the fields it has when the event comes.
class KeyboardMonitorView : public QQuickItem {
    Q_OBJECT

public:
    explicit KeyboardMonitorView(QQuickItem* parent = nullptr);
    ~KeyboardMonitorView() override;

    /// The fields and actions of the monitor; may be changed at any time.
    KeyEventRouter router;
    /// True when the window's keys come here, false when they no longer do: the window was left or lost the
    /// keyboard. May be called again with the same value.
    std::function<void(bool isFocused)> onFocusChanged;
    /// A hotkey was being recorded when something else got the keys: a menu, a dialog or a text field in the
    /// window, or another window.
    std::function<void()> onRecordingInterrupted;
    /// Reads the windowing system's events; must outlive this. Without it every event passes.
    const KeyEventTranslator* translator = nullptr;

    /// Offers a key that the window has not seen yet. True when it was played: then the window must not see
    /// it. False when it is to go the window's way, where it comes here again; nothing has been done. Only
    /// keys of the playing area are played so, and no hotkey.
    bool handleDirectly(const KeyEvent& event);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void installMonitors(QQuickWindow& window);
    void removeMonitors();
    void watchFocusObject(QObject* focusObject);
    void loseKeys();
    void interruptRecording() const;
    void reportFocus(bool isFocused) const;
    [[nodiscard]] KeyEventRouter::Context context() const;
    [[nodiscard]] bool consumes(const QKeyEvent& event);
    [[nodiscard]] bool wouldConsume(const QKeyEvent& event) const;

    QPointer<QQuickWindow> window_;
    QPointer<QObject> focusObject_;
};

} // namespace tavro
