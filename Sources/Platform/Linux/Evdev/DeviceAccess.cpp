#include "Platform/Linux/Evdev/DeviceAccess.h"

#include "Platform/Linux/Evdev/DeviceNode.h"
#include "Platform/Linux/Evdev/KeyboardDevice.h"
#include "Platform/Posix/FileDescriptor.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>

namespace tavro::evdev {

namespace {

/// 0, or why it cannot be opened.
int errorOfOpening(const std::string& path, int mode) {
    const posix::FileDescriptor file(open(path.c_str(), mode | O_NONBLOCK | O_CLOEXEC));
    return file.isOpen() ? 0 : errno;
}

bool isForbidden(const std::string& path, int mode) {
    const auto error = errorOfOpening(path, mode);
    return error == EACCES || error == EPERM || error == EROFS;
}

bool mayBeKeyboard(const DeviceNode& node, const InputDevices& devices) {
    const auto kind = node.kind(devices.seat);
    return kind == DeviceNode::Kind::keyboard || kind == DeviceNode::Kind::unknown;
}

} // namespace

bool DeviceAccess::isAllowed(const InputDevices& devices) {
    if (isForbidden(devices.uinputPath, O_RDWR) || isForbidden(devices.folder, O_RDONLY | O_DIRECTORY)) {
        return false;
    }
    const auto nodes = DeviceNode::list(devices.folder).value_or(std::vector<DeviceNode>());
    return std::ranges::none_of(nodes, [&](const DeviceNode& node) {
        return mayBeKeyboard(node, devices) && isForbidden(node.path(), O_RDWR);
    });
}

bool DeviceAccess::canCapture(const InputDevices& devices) {
    const auto nodes = DeviceNode::list(devices.folder);
    return nodes && errorOfOpening(devices.uinputPath, O_RDWR) == 0 &&
           std::ranges::any_of(*nodes, [&](const DeviceNode& node) {
               return mayBeKeyboard(node, devices) && KeyboardDevice::open(node.path()) != nullptr;
           });
}

} // namespace tavro::evdev
