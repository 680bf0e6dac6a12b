#include "Platform/Linux/Evdev/KeyboardDevice.h"

#include "Platform/Linux/Evdev/DeviceNode.h"
#include "Platform/Linux/Evdev/KeyboardShape.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <ctime>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <sys/ioctl.h>

namespace tavro::evdev {

namespace {

constexpr std::int64_t microsecondsPerSecond = 1'000'000;

template <typename Predicate>
KeySet keysWhere(Predicate predicate) {
    KeySet keys;
    for (unsigned int code = 0; code < keys.size(); ++code) {
        keys.set(code, predicate(code));
    }
    return keys;
}

bool isForeignKeyboard(const libevdev& device) {
    const auto* const physicalPath = libevdev_get_phys(&device);
    if (physicalPath != nullptr && std::string_view(physicalPath).starts_with(DeviceNode::copyMark)) {
        return false;
    }
    return KeyboardShape::isKeyboard(
        keysWhere([&](unsigned int code) { return libevdev_has_event_code(&device, EV_KEY, code) != 0; }));
}

} // namespace

std::unique_ptr<KeyboardDevice> KeyboardDevice::open(const std::string& path) {
    posix::FileDescriptor file(::open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
    posix::FileDescriptor stateFile(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file.isOpen() || !stateFile.isOpen()) {
        return nullptr;
    }
    // Nobody reads events there, so that none should wait. Without the mask they fill a small queue.
    const input_mask noEvents{};
    ioctl(stateFile.number(), EVIOCSMASK, &noEvents);
    // The times of events are compared with those of the grab, and the wall clock can be set.
    int clock = CLOCK_MONOTONIC;
    libevdev* device = nullptr;
    if (ioctl(file.number(), EVIOCSCLOCKID, &clock) != 0 ||
        libevdev_new_from_fd(file.number(), &device) != 0) {
        return nullptr;
    }
    if (!isForeignKeyboard(*device)) {
        libevdev_free(device);
        return nullptr;
    }
    // A copy that offered force feedback would have to answer for it.
    libevdev_disable_event_type(device, EV_FF);
    return std::unique_ptr<KeyboardDevice>(
        new KeyboardDevice(path, std::move(file), std::move(stateFile), device));
}

KeyboardDevice::KeyboardDevice(std::string path, posix::FileDescriptor file, posix::FileDescriptor stateFile,
                               libevdev* device)
    : path_(std::move(path)), file_(std::move(file)), stateFile_(std::move(stateFile)), device_(device) {}

KeyboardDevice::~KeyboardDevice() {
    libevdev_free(device_);
}

KeySet KeyboardDevice::initiallyHeld() const {
    return keysWhere([&](unsigned int code) { return libevdev_get_event_value(device_, EV_KEY, code) != 0; });
}

const input_event* KeyboardDevice::next() {
    while (!hasNext_ && !isGone_) {
        const auto mode = isCatchingUp_ ? LIBEVDEV_READ_FLAG_SYNC : LIBEVDEV_READ_FLAG_NORMAL;
        const auto status = libevdev_next_event(device_, mode, &next_);
        if (status == LIBEVDEV_READ_STATUS_SUCCESS || status == LIBEVDEV_READ_STATUS_SYNC) {
            isCatchingUp_ = status == LIBEVDEV_READ_STATUS_SYNC;
            hasNext_ = true;
        } else if (status == -EAGAIN && isCatchingUp_) {
            isCatchingUp_ = false;
        } else if (status == -EAGAIN) {
            break;
        } else if (status != -EINTR) {
            isGone_ = true;
        }
    }
    return hasNext_ ? &next_ : nullptr;
}

bool KeyboardDevice::hasKeysDown() const {
    std::array<unsigned char, KEY_CNT / CHAR_BIT> keys{};
    ioctl(stateFile_.number(), EVIOCGKEY(keys.size()), keys.data());
    return std::ranges::any_of(keys, [](unsigned char byte) { return byte != 0; });
}

bool KeyboardDevice::grab() {
    return libevdev_grab(device_, LIBEVDEV_GRAB) == 0;
}

void KeyboardDevice::ungrab() {
    libevdev_grab(device_, LIBEVDEV_UNGRAB);
}

std::int64_t KeyboardDevice::now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * microsecondsPerSecond + time.tv_nsec / 1000;
}

std::int64_t KeyboardDevice::timeOf(const input_event& event) {
    return event.input_event_sec * microsecondsPerSecond + event.input_event_usec;
}

void KeyboardDevice::write(const std::vector<input_event>& events) {
    // A keyboard that is just being unplugged has no lights to set.
    [[maybe_unused]] const auto written =
        ::write(file_.number(), events.data(), events.size() * sizeof(input_event));
}

} // namespace tavro::evdev
