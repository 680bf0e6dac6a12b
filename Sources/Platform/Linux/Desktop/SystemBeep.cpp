#include "Platform/Linux/Desktop/SystemBeep.h"

#include <QGuiApplication>

#include <unistd.h>
#include <xcb/xcb.h>

namespace tavro::linuxos {

void systemBeep() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    auto* const connection = x11 != nullptr ? x11->connection() : nullptr;
    if (connection != nullptr) {
        // As loud as the user has set it.
        constexpr int percentAboveUsual = 0;
        xcb_bell(connection, percentAboveUsual);
        xcb_flush(connection);
    } else if (isatty(STDERR_FILENO) != 0) {
        constexpr char bell = '\a';
        // Nothing is left to do when even this fails.
        [[maybe_unused]] const auto written = write(STDERR_FILENO, &bell, 1);
    }
}

} // namespace tavro::linuxos
