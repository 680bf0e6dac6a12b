// The least that brings a key to JACK: a plain X window, and the program's own JACK adapter behind it, so
// that the toolkit and the instrument are all that the program adds. Every key plays one note.
// Usage: bare_client CLIENT-NAME (its port is "Out", its window has the client's name). Ends with SIGTERM.

#include "Common/DeafActor.h"
#include "Platform/Linux/Jack/MidiSystemAdapter.h"

#include <array>
#include <cstdint>
#include <cstdio>

#include <X11/XKBlib.h>
#include <X11/Xlib.h>

namespace {

constexpr std::uint8_t note = 60;
constexpr std::array<std::uint8_t, 3> noteOn{0x90, note, 100};
constexpr std::array<std::uint8_t, 3> noteOff{0x80, note, 0};

Window openWindow(Display* display, const char* name) {
    constexpr unsigned width = 400;
    constexpr unsigned height = 300;
    const auto root = DefaultRootWindow(display);
    const auto window = XCreateSimpleWindow(display, root, 0, 0, width, height, 0, 0, 0);
    XStoreName(display, window, name);
    XSelectInput(display, window, KeyPressMask | KeyReleaseMask);
    XMapRaised(display, window);
    XFlush(display);
    return window;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: bare_client CLIENT-NAME\n", stderr);
        return 2;
    }
    tavro::bench::DeafActor actor;
    tavro::jack::MidiSystemAdapter midi(actor);
    const auto client = midi.createClient(argv[1], {});
    const auto source = midi.createSource(client.reference, "Out");
    auto* const display = XOpenDisplay(nullptr);
    if (source.status != 0 || display == nullptr) {
        std::fputs("bare_client: no JACK server or no display\n", stderr);
        return 1;
    }
    XkbSetDetectableAutoRepeat(display, True, nullptr);
    openWindow(display, argv[1]);
    for (;;) {
        XEvent event{};
        XNextEvent(display, &event);
        if (event.type == KeyPress) {
            midi.received(source.reference, noteOn);
        } else if (event.type == KeyRelease) {
            midi.received(source.reference, noteOff);
        }
    }
}
