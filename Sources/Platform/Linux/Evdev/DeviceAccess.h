#pragma once

#include <string>

namespace tavro::evdev {

/// What the system lets this program do with the keyboards.
class DeviceAccess {
public:
    DeviceAccess() = delete;

    /// Whether every keyboard may be read and written, and keyboards may be made. A device of which it is not
    /// known whether it is one counts as one. What does not exist is not forbidden.
    [[nodiscard]] static bool isAllowed(const std::string& inputFolder, const std::string& uinputPath);

    /// Whether there is a keyboard that can be opened, and keyboards can be made.
    [[nodiscard]] static bool canCapture(const std::string& inputFolder, const std::string& uinputPath);
};

} // namespace tavro::evdev
