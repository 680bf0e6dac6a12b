#include "Platform/Linux/Session/OwnSeat.h"

#include <cstdlib>
#include <memory>

#include <systemd/sd-login.h>
#include <unistd.h>

namespace tavro::linuxos {

namespace {

struct Free {
    void operator()(char* text) const { free(text); }
};

using Text = std::unique_ptr<char, Free>;

Text session() {
    char* name = nullptr;
    if (sd_pid_get_session(0, &name) < 0) {
        name = nullptr;
        sd_uid_get_display(getuid(), &name);
    }
    return Text(name);
}

} // namespace

std::string OwnSeat::name() {
    if (const auto* const seat = std::getenv("XDG_SEAT"); seat != nullptr && *seat != '\0') {
        return seat;
    }
    char* seat = nullptr;
    // Files are read for it; nobody is asked.
    if (const auto own = session(); own && sd_session_get_seat(own.get(), &seat) >= 0) {
        return Text(seat).get();
    }
    return "seat0";
}

} // namespace tavro::linuxos
