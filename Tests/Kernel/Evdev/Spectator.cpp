#include "Spectator.h"

#include "Expectations.h"
#include "TestKeyboard.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <filesystem>

#include <fcntl.h>
#include <linux/input.h>
#include <poll.h>
#include <sys/ioctl.h>

namespace tavro::proof {

namespace {

constexpr auto waitInMilliseconds = 10;

/// Empty when the device is none of the test's.
std::string shownName(int file) {
    std::array<char, 256> buffer{};
    if (ioctl(file, EVIOCGNAME(buffer.size() - 1), buffer.data()) < 0) {
        return {};
    }
    std::string name = buffer.data();
    const std::string prefix = TestKeyboard::namePrefix;
    if (!name.starts_with(prefix)) {
        return {};
    }
    name.erase(0, prefix.size());
    const std::string mark = " (TAVRO)";
    for (auto at = name.find(mark); at != std::string::npos; at = name.find(mark)) {
        name.replace(at, mark.size(), "'");
    }
    return name;
}

} // namespace

void Spectator::look() {
    openNew();
    std::vector<pollfd> descriptors;
    std::vector<std::string> paths;
    for (const auto& [path, device] : devices_) {
        descriptors.push_back({.fd = device.file.number(), .events = POLLIN, .revents = 0});
        paths.push_back(path);
    }
    poll(descriptors.data(), descriptors.size(), waitInMilliseconds);
    for (const auto& path : paths) {
        readFrom(path);
    }
}

void Spectator::openNew() {
    for (const auto& entry : std::filesystem::directory_iterator("/dev/input")) {
        const auto path = entry.path().string();
        if (devices_.contains(path) || !entry.path().filename().string().starts_with("event")) {
            continue;
        }
        posix::FileDescriptor file(open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
        auto clock = CLOCK_MONOTONIC;
        if (!file.isOpen() || ioctl(file.number(), EVIOCSCLOCKID, &clock) != 0) {
            continue;
        }
        const auto name = shownName(file.number());
        if (!name.empty()) {
            devices_[path] = {name, std::move(file)};
        }
    }
}

void Spectator::readFrom(const std::string& path) {
    auto& device = devices_.at(path);
    input_event event{};
    ssize_t size = 0;
    while ((size = read(device.file.number(), &event, sizeof event)) == static_cast<ssize_t>(sizeof event)) {
        expect(event.type != EV_SYN || event.code != SYN_DROPPED, "the spectator was too slow");
        const auto time = event.input_event_sec * 1'000'000 + event.input_event_usec;
        auto see = [&](const std::string& what) {
            seen_.emplace(time, device.name + ' ' + what + ' ' + std::to_string(event.value));
        };
        if (event.type == EV_KEY) {
            see(std::to_string(event.code));
            ++counts_[{event.code, event.value}];
            latestDevices_[event.code] = device.name;
            if (event.value == 0) {
                held_.erase({device.name, event.code});
            } else {
                held_.insert({device.name, event.code});
            }
        } else if (event.type == EV_REL && watchesMovements_) {
            see(event.code == REL_X ? "REL_X" : "REL_Y");
        } else if (event.type == EV_MSC && watchesRawCodes_) {
            seen_.emplace(time, device.name + " raw " + std::to_string(event.value - 0x70000));
        }
    }
    if (size < 0 && errno == ENODEV) {
        // With a keyboard go its keys.
        std::erase_if(held_, [&](const auto& key) { return key.first == device.name; });
        devices_.erase(path);
    }
}

std::vector<std::string> Spectator::takeKeys() {
    std::vector<std::string> keys;
    for (auto& [time, text] : seen_) {
        keys.push_back(std::move(text));
    }
    seen_.clear();
    return keys;
}

void Spectator::waitForWayBy(const std::string& device, TestKeyboard& keyboard) {
    waitFor(
        [&] {
            keyboard.tap(KEY_ENTER);
            look();
            return latestDeviceOf(KEY_ENTER) == device;
        },
        "line breaks by " + device);
}

int Spectator::count(std::uint16_t key, int value) const {
    const auto found = counts_.find({key, value});
    return found == counts_.end() ? 0 : found->second;
}

std::string Spectator::latestDeviceOf(std::uint16_t key) const {
    const auto found = latestDevices_.find(key);
    return found == latestDevices_.end() ? std::string() : found->second;
}

std::vector<std::string> Spectator::held() const {
    std::vector<std::string> keys;
    for (const auto& [device, key] : held_) {
        keys.push_back(device + ' ' + std::to_string(key));
    }
    return keys;
}

bool Spectator::has(const std::string& device) const {
    return std::ranges::any_of(devices_, [&](const auto& entry) { return entry.second.name == device; });
}

std::vector<std::string> Spectator::devices() const {
    std::vector<std::string> names;
    for (const auto& [path, device] : devices_) {
        names.push_back(device.name);
    }
    std::ranges::sort(names);
    return names;
}

std::string Spectator::pathOf(const std::string& device) const {
    for (const auto& [path, candidate] : devices_) {
        if (candidate.name == device) {
            return path;
        }
    }
    expect(false, "there is no device " + device);
    return {};
}

int Spectator::descriptor(const std::string& device) const {
    return devices_.at(pathOf(device)).file.number();
}

} // namespace tavro::proof
