#include "Platform/MacOS/BootClockAdapter.h"

#include <array>

#include <sys/sysctl.h>
#include <sys/time.h>
#include <time.h>

namespace tavro::macos {

std::optional<std::string> BootClockAdapter::identifier() const {
    std::array<int, 2> name{CTL_KERN, KERN_BOOTTIME};
    timeval boot{};
    std::size_t size = sizeof boot;
    if (sysctl(name.data(), static_cast<unsigned>(name.size()), &boot, &size, nullptr, 0) != 0) {
        return std::nullopt;
    }
    return std::to_string(boot.tv_sec);
}

double BootClockAdapter::secondsSince1970() const {
    return static_cast<double>(clock_gettime_nsec_np(CLOCK_REALTIME)) / 1e9;
}

double BootClockAdapter::secondsUp() const {
    return static_cast<double>(clock_gettime_nsec_np(CLOCK_UPTIME_RAW)) / 1e9;
}

} // namespace tavro::macos
