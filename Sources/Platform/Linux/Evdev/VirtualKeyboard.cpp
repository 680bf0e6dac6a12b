#include "Platform/Linux/Evdev/VirtualKeyboard.h"

#include "Platform/Linux/Evdev/DeviceNode.h"

#include <array>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <linux/uinput.h>
#include <sys/ioctl.h>

namespace tavro::evdev {

namespace {

struct StateRange {
    std::uint16_t type;
    std::uint16_t end;
};

/// The axes of single fingers have no state of their own.
constexpr std::array stateRanges{StateRange{EV_LED, LED_CNT}, StateRange{EV_SW, SW_CNT},
                                 StateRange{EV_ABS, ABS_MT_SLOT}};

input_event eventOf(std::uint16_t type, std::uint16_t code, std::int32_t value) {
    input_event event{};
    event.type = type;
    event.code = code;
    event.value = value;
    return event;
}

} // namespace

std::unique_ptr<VirtualKeyboard> VirtualKeyboard::copyOf(const KeyboardDevice& original,
                                                         const std::string& uinputPath) {
    posix::FileDescriptor file(open(uinputPath.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
    const auto mark = std::string(DeviceNode::copyMark) + "copy";
    if (!file.isOpen() || ioctl(file.number(), UI_SET_PHYS, mark.c_str()) != 0) {
        return nullptr;
    }
    auto& description = original.description();
    const std::string name = libevdev_get_name(&description);
    // The longest name that the kernel takes has room for the zero at its end.
    const auto nameOfCopy = (name + " (TAVRO)").substr(0, UINPUT_MAX_NAME_SIZE - 1);
    libevdev_set_name(&description, nameOfCopy.c_str());
    libevdev_uinput* device = nullptr;
    const auto status = libevdev_uinput_create_from_device(&description, file.number(), &device);
    libevdev_set_name(&description, name.c_str());
    if (status != 0) {
        return nullptr;
    }
    return std::unique_ptr<VirtualKeyboard>(new VirtualKeyboard(std::move(file), device));
}

VirtualKeyboard::VirtualKeyboard(posix::FileDescriptor file, libevdev_uinput* device)
    : file_(std::move(file)), device_(device), creationTime_(KeyboardDevice::now()) {}

VirtualKeyboard::~VirtualKeyboard() {
    libevdev_uinput_destroy(device_);
}

void VirtualKeyboard::takeStateOf(const KeyboardDevice& original) {
    const auto& description = original.description();
    std::vector<input_event> events;
    for (const auto& range : stateRanges) {
        for (std::uint16_t code = 0; code < range.end; ++code) {
            auto value = 0;
            if (libevdev_fetch_event_value(&description, range.type, code, &value) != 0) {
                events.push_back(eventOf(range.type, code, value));
            }
        }
    }
    // In a fixed order: delay, period. The kernel's own values are asked for, since a program may have set
    // them without any event.
    std::array<unsigned int, REP_CNT> repetition{};
    if (libevdev_has_event_type(&description, EV_REP) != 0 &&
        ioctl(original.descriptor(), EVIOCGREP, repetition.data()) == 0) {
        for (std::uint16_t code = 0; code < REP_CNT; ++code) {
            events.push_back(eventOf(EV_REP, code, static_cast<std::int32_t>(repetition[code])));
        }
    }
    events.push_back(eventOf(EV_SYN, SYN_REPORT, 0));
    write(events);
}

void VirtualKeyboard::write(const std::vector<input_event>& events) {
    const auto size = events.size() * sizeof(input_event);
    while (::write(file_.number(), events.data(), size) < 0 && errno == EINTR) {
    }
}

std::vector<input_event> VirtualKeyboard::takeSettings() {
    std::vector<input_event> settings;
    input_event event{};
    while (read(file_.number(), &event, sizeof event) == static_cast<ssize_t>(sizeof event)) {
        if (event.type == EV_LED || event.type == EV_SND) {
            settings.push_back(event);
        }
    }
    if (!settings.empty()) {
        settings.push_back(eventOf(EV_SYN, SYN_REPORT, 0));
    }
    return settings;
}

} // namespace tavro::evdev
