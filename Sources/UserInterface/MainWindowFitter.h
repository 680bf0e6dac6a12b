#pragma once

#include "PlatformInterfaces/Application/WindowAspect.h"
#include "UserInterface/WindowPanels.h"

#include <QObject>
#include <QPointer>
#include <QWindow>

namespace tavro {

/// Fits the main window to its panels: when it first has the keyboard, and whenever a panel is opened or
/// closed while it has. Main thread only.
class MainWindowFitter : public QObject {
    Q_OBJECT

public:
    /// All of them must outlive this, but for the window.
    MainWindowFitter(QWindow& window, const WindowPanels& panels, WindowAspect& aspect);

private:
    void fit();
    void fitWhenItAppears();

    QPointer<QWindow> window_;
    const WindowPanels& panels_;
    WindowAspect& aspect_;
    bool hasAppeared_ = false;
};

} // namespace tavro
