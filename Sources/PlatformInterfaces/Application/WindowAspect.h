#pragma once

#include <QSize>

class QWindow;

namespace tavro {

/// Keeps the proportions of a window while the user resizes it. One adapter per platform. Main thread only.
class WindowAspect {
public:
    WindowAspect() = default;
    WindowAspect(const WindowAspect&) = delete;
    WindowAspect& operator=(const WindowAspect&) = delete;
    virtual ~WindowAspect() = default;

    /// From now on the window's content is to be like `ratio`, whose sides are above 0. `size` is what the
    /// program itself gives it next, even when it is of another shape because the screen is not high enough.
    /// May come before the window is shown, and again with other values. The window system may not be able
    /// to, or not want to.
    virtual void setContentAspectRatio(QWindow& window, QSize ratio, QSize size) = 0;
};

} // namespace tavro
