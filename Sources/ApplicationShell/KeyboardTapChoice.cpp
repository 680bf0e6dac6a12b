#include "ApplicationShell/KeyboardTapChoice.h"

namespace tavro {

KeyboardTapChoice::Kind KeyboardTapChoice::kind() const {
    const bool isWayland = sessionType == QLatin1String("wayland") || !waylandDisplay.isEmpty();
    if (platformName == QLatin1String("xcb") && !isWayland) {
        return Kind::x11;
    }
    return hasInputDevices ? Kind::evdev : Kind::none;
}

} // namespace tavro
