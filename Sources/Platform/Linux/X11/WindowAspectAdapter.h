#pragma once

#include "PlatformInterfaces/Application/WindowAspect.h"

#include <QAbstractNativeEventFilter>

#include <cstdint>
#include <map>
#include <vector>

#include <xcb/xcb.h>

namespace tavro::x11 {

/// Asks the window manager for the proportions, beside what Qt asks it for. Qt writes its own wishes anew
/// whenever one of them changes, and leaves this one out; then it is added again.
class WindowAspectAdapter final : public WindowAspect, public QAbstractNativeEventFilter {
public:
    struct Ratio {
        std::uint32_t width = 1;
        std::uint32_t height = 1;
    };

    /// From the highest shape to the widest.
    struct Range {
        Ratio highest;
        Ratio widest;
    };

    /// The application is connected to an X server.
    WindowAspectAdapter();

    void setContentAspectRatio(QWindow& window, QSize ratio, QSize size) override;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

    /// The wishes of a window (WM_NORMAL_HINTS) with the range among them; empty ones are none yet. The
    /// smallest size is raised to the highest shape, because window managers heed the shape last and would go
    /// below; all other wishes stay. Nothing changes when the range is there already.
    [[nodiscard]] static std::vector<std::uint32_t> withRange(std::vector<std::uint32_t> hints,
                                                              const Range& range);

    /// The shapes that a window may have: the ratio, and that of the size when it is wider. Window managers
    /// would else enlarge a window whose height the screen limits, beyond the screen's edge.
    [[nodiscard]] static Range rangeOf(QSize ratio, QSize size);

private:
    void apply(xcb_window_t window, const Range& range);

    xcb_connection_t* connection_;
    std::map<xcb_window_t, Range> ranges_;
};

} // namespace tavro::x11
