// tavro-key-guard [DISPLAY]: lets keys repeat again for a program that can no longer do it itself. That
// program writes lines of key codes to the standard input; when it has closed it, by will or by its end, the
// keys of the last line get their repeats back.

#include "Platform/Linux/X11/Repeat/KeyRepeat.h"
#include "Platform/Linux/X11/Repeat/RestoreOrders.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <iostream>

#include <unistd.h>

int main(int argc, char** argv) {
    // What ends the program must not end the one that cleans up after it; it ends with its input.
    for (const auto signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) {
        std::signal(signal, SIG_IGN);
    }
    // At once: later the way to the display may no longer be known.
    auto* const connection = xcb_connect(argc > 1 ? argv[1] : nullptr, nullptr);
    if (xcb_connection_has_error(connection) != 0) {
        std::cerr << "tavro-key-guard: the display cannot be opened\n";
        xcb_disconnect(connection);
        return EXIT_FAILURE;
    }
    tavro::x11::RestoreOrders orders;
    std::array<char, 4096> text{};
    while (true) {
        const auto size = read(STDIN_FILENO, text.data(), text.size());
        if (size > 0) {
            orders.take({text.data(), static_cast<std::size_t>(size)});
        } else if (size == 0 || errno != EINTR) {
            break;
        }
    }
    tavro::x11::KeyRepeat::write(connection, orders.keys(), true);
    xcb_disconnect(connection);
    return EXIT_SUCCESS;
}
