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

} // namespace

bool DeviceAccess::isAllowed(const std::string& inputFolder, const std::string& uinputPath) {
    if (isForbidden(uinputPath, O_RDWR) || isForbidden(inputFolder, O_RDONLY | O_DIRECTORY)) {
        return false;
    }
    const auto nodes = DeviceNode::list(inputFolder).value_or(std::vector<DeviceNode>());
    return std::ranges::none_of(nodes, [](const DeviceNode& node) {
        return node.kind() != DeviceNode::Kind::other && isForbidden(node.path(), O_RDWR);
    });
}

bool DeviceAccess::canCapture(const std::string& inputFolder, const std::string& uinputPath) {
    const auto nodes = DeviceNode::list(inputFolder);
    return nodes && errorOfOpening(uinputPath, O_RDWR) == 0 &&
           std::ranges::any_of(*nodes, [](const DeviceNode& node) {
               return node.kind() != DeviceNode::Kind::other && KeyboardDevice::open(node.path()) != nullptr;
           });
}

} // namespace tavro::evdev
