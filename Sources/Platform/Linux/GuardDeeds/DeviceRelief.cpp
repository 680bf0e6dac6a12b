#include "Platform/Linux/GuardDeeds/DeviceRelief.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <iostream>

#include <linux/input.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace tavro::guard {

namespace {

posix::FileDescriptor duplicate(const ForeignFiles& files, int number) {
    auto made = files.duplicate(number);
    if (!made.isOpen()) {
        std::cerr << "tavro-guard: a keyboard cannot be given back: " << std::strerror(errno) << "\n";
    }
    return made;
}

/// The kernel passes on the releases of keys that are down, and drops the others.
std::vector<input_event> releaseOfEveryKey() {
    std::vector<input_event> events;
    for (std::uint16_t key = 0; key < KEY_CNT; ++key) {
        input_event event{};
        event.type = EV_KEY;
        event.code = key;
        events.push_back(event);
    }
    input_event end{};
    end.type = EV_SYN;
    end.code = SYN_REPORT;
    events.push_back(end);
    return events;
}

} // namespace

DeviceRelief::DeviceRelief(pid_t process) : files_(process) {}

void DeviceRelief::giveBack(const std::vector<int>& keyboards, const std::vector<int>& copies) const {
    for (const auto number : keyboards) {
        if (const auto file = duplicate(files_, number); file.isOpen()) {
            // One that is not grabbed refuses it, which is just as well.
            ioctl(file.number(), EVIOCGRAB, nullptr);
        }
    }
    for (const auto number : copies) {
        if (const auto file = duplicate(files_, number); file.isOpen()) {
            const auto events = releaseOfEveryKey();
            [[maybe_unused]] const auto written =
                write(file.number(), events.data(), events.size() * sizeof(input_event));
        }
    }
}

} // namespace tavro::guard
