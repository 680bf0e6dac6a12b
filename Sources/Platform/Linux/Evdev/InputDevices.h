#pragma once

#include "Platform/Linux/Evdev/DeviceSeat.h"

#include <string>

namespace tavro::evdev {

/// Where keyboards are found and made, and whose.
struct InputDevices {
    std::string folder = "/dev/input";
    std::string uinputPath = "/dev/uinput";
    /// Only the keyboards of this seat are opened.
    std::string seat = DeviceSeat::main;
};

} // namespace tavro::evdev
