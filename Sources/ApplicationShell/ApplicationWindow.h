#pragma once

#include "ApplicationShell/WindowMeasures.h"

namespace tavro {

/// The main window, as far as start and end deal with it. Main thread only.
class ApplicationWindow {
public:
    ApplicationWindow() = default;
    ApplicationWindow(const ApplicationWindow&) = delete;
    ApplicationWindow& operator=(const ApplicationWindow&) = delete;
    virtual ~ApplicationWindow() = default;

    /// Makes the window, hidden, with this size and these limits, in the middle of the screen. Its height
    /// follows its width. False when it cannot be made; the reasons went to the error output.
    [[nodiscard]] virtual bool create(const WindowMeasures& measures) = 0;

    /// Shows the window in front of the others. Only after a successful `create`, as the rest.
    virtual void show() = 0;

    virtual void minimize() = 0;

    /// Brings the application to the front, whichever is there.
    virtual void activate() = 0;
};

} // namespace tavro
