#include "Platform/Linux/X11/DetectableAutorepeat.h"

#include <QGuiApplication>

// Last: its macros have the names of others' things.
#include <X11/XKBlib.h>

namespace tavro::linuxos {

bool DetectableAutorepeat::enable() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr || x11->display() == nullptr) {
        return false;
    }
    Bool isSupported = False;
    return XkbSetDetectableAutoRepeat(x11->display(), True, &isSupported) != False && isSupported != False;
}

} // namespace tavro::linuxos
