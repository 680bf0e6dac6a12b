#include "Platform/Linux/Desktop/BootClockAdapter.h"

#include "Platform/Posix/WholeFile.h"

#include <system_error>
#include <utility>

#include <time.h>

namespace tavro::linuxos {

namespace {

double secondsOf(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

} // namespace

BootClockAdapter::BootClockAdapter(std::filesystem::path identifierFile)
    : identifierFile_(std::move(identifierFile)) {}

std::optional<std::string> BootClockAdapter::identifier() const {
    try {
        const auto text = posix::WholeFile::read(identifierFile_).value_or("");
        const auto end = text.find_last_not_of(" \n");
        return end == std::string::npos ? std::nullopt : std::optional(text.substr(0, end + 1));
    } catch (const std::system_error&) {
        return std::nullopt;
    }
}

double BootClockAdapter::secondsSince1970() const {
    return secondsOf(CLOCK_REALTIME);
}

double BootClockAdapter::secondsUp() const {
    return secondsOf(CLOCK_BOOTTIME);
}

} // namespace tavro::linuxos
