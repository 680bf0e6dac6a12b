#include "Platform/Linux/GuardDeeds/DisplayRelief.h"

#include "Platform/Linux/X11/Repeat/KeyRepeat.h"

#include <iostream>

namespace tavro::guard {

DisplayRelief::DisplayRelief(const std::string& display) {
    if (display.empty()) {
        return;
    }
    connection_.reset(xcb_connect(display.c_str(), nullptr));
    if (xcb_connection_has_error(connection_.get()) != 0) {
        std::cerr << "tavro-guard: the display " << display << " cannot be opened\n";
        connection_.reset();
    }
}

void DisplayRelief::endConnectionOf(std::uint32_t resource) const {
    if (connection_ && resource != 0) {
        xcb_kill_client(connection_.get(), resource);
        xcb_flush(connection_.get());
    }
}

void DisplayRelief::restoreRepeats(const std::vector<unsigned>& keys) const {
    x11::KeySet set;
    for (const auto key : keys) {
        if (key < set.size()) {
            set.set(key);
        }
    }
    if (connection_ && set.any()) {
        x11::KeyRepeat::write(connection_.get(), set, true);
    }
}

} // namespace tavro::guard
