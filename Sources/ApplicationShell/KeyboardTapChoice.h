#pragma once

#include <QString>

namespace tavro {

/// Which way to the keys of the whole session fits it, on a system that has several.
struct KeyboardTapChoice {
    enum class Kind {
        /// Grabs at the X server.
        x11,
        /// The keyboards themselves, below any display server.
        evdev,
        none,
    };

    /// The windowing system's plug-in of the running application.
    QString platformName;
    /// XDG_SESSION_TYPE and WAYLAND_DISPLAY, empty when unset.
    QString sessionType;
    QString waylandDisplay;
    bool hasInputDevices = false;

    /// In a Wayland session an X server sees only the keys of its own windows, so that grabs there would
    /// look as if they worked.
    [[nodiscard]] Kind kind() const {
        const bool isWayland = sessionType == QLatin1String("wayland") || !waylandDisplay.isEmpty();
        if (platformName == QLatin1String("xcb") && !isWayland) {
            return Kind::x11;
        }
        return hasInputDevices ? Kind::evdev : Kind::none;
    }
};

} // namespace tavro
