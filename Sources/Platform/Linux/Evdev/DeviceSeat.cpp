#include "Platform/Linux/Evdev/DeviceSeat.h"

#include <memory>

#include <libudev.h>
#include <unistd.h>

namespace tavro::evdev {

namespace {

constexpr auto socketOfService = "/run/udev/control";

struct Unreference {
    void operator()(udev* context) const { udev_unref(context); }

    void operator()(udev_device* device) const { udev_device_unref(device); }
};

} // namespace

std::optional<std::string> DeviceSeat::of(dev_t device) {
    const std::unique_ptr<udev, Unreference> context(udev_new());
    const std::unique_ptr<udev_device, Unreference> known(
        context ? udev_device_new_from_devnum(context.get(), 'c', device) : nullptr);
    if (!known) {
        return main;
    }
    if (const auto* const seat = udev_device_get_property_value(known.get(), "ID_SEAT")) {
        return seat;
    }
    // Its rules come a moment after the device.
    const bool isPending =
        udev_device_get_is_initialized(known.get()) == 0 && access(socketOfService, F_OK) == 0;
    return isPending ? std::nullopt : std::optional<std::string>(main);
}

} // namespace tavro::evdev
