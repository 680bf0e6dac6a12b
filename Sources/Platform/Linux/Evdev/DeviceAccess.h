#pragma once

#include "Platform/Linux/Evdev/InputDevices.h"

namespace tavro::evdev {

/// What the system lets this program do with the keyboards.
class DeviceAccess {
public:
    DeviceAccess() = delete;

    /// Whether every keyboard of the seat may be read and written, and keyboards may be made. A device of
    /// which it is not known whether it is one counts as one. What does not exist is not forbidden.
    [[nodiscard]] static bool isAllowed(const InputDevices& devices);

    /// Whether there is a keyboard of the seat that can be opened, and keyboards can be made.
    [[nodiscard]] static bool canCapture(const InputDevices& devices);
};

} // namespace tavro::evdev
