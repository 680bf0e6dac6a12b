#pragma once

#include <optional>
#include <string>

#include <sys/types.h>

namespace tavro::evdev {

/// To which seat a device belongs: the screens, keyboards and mice of one user of the computer.
class DeviceSeat {
public:
    DeviceSeat() = delete;

    /// That of every device for which the system names no other.
    static constexpr auto main = "seat0";

    /// By udev's property of the device. Nothing while udev runs and has not come to it; without udev it is
    /// the main one.
    [[nodiscard]] static std::optional<std::string> of(dev_t device);
};

} // namespace tavro::evdev
