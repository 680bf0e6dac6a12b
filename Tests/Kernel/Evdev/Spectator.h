#pragma once

#include "Platform/Posix/FileDescriptor.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tavro::proof {

class TestKeyboard;

/// Sees of the test's keyboards and their copies what the rest of the system sees: it opens each device as it
/// comes, like a display server. A copy is shown by the name of its keyboard and an apostrophe.
class Spectator {
public:
    /// Takes what has come, and waits for a moment when nothing has.
    void look();

    /// The keys that came since the last call, in the order of their times: "A' 30 1" is a press of the key
    /// 30 on the copy of the keyboard A; the values are the kernel's.
    [[nodiscard]] std::vector<std::string> takeKeys();

    /// The pointer's movements among the keys: "A' REL_X 5".
    void watchMovements() { watchesMovements_ = true; }

    /// The raw codes among the keys: "A' raw 30".
    void watchRawCodes() { watchesRawCodes_ = true; }

    /// How often the key changed to the value on any device, taken or not.
    [[nodiscard]] int count(std::uint16_t key, int value) const;

    /// On which device the key changed last; empty when on none.
    [[nodiscard]] std::string latestDeviceOf(std::uint16_t key) const;

    /// Types line breaks on a keyboard until they come by that device, the keyboard's own or its copy, so
    /// that a grab is known to have begun or ended.
    void waitForWayBy(const std::string& device, TestKeyboard& keyboard);

    /// The keys that are down, with their devices.
    [[nodiscard]] std::vector<std::string> held() const;

    [[nodiscard]] bool has(const std::string& device) const;

    /// The devices that are there, in alphabetical order.
    [[nodiscard]] std::vector<std::string> devices() const;

    /// The file of a device that is there.
    [[nodiscard]] std::string pathOf(const std::string& device) const;

    /// The same, opened; for what only the system does.
    [[nodiscard]] int descriptor(const std::string& device) const;

private:
    struct Device {
        std::string name;
        posix::FileDescriptor file;
    };

    void openNew();
    void readFrom(const std::string& path);

    std::map<std::string, Device> devices_;
    /// By their times; of the same time in the order of reading.
    std::multimap<std::int64_t, std::string> seen_;
    std::map<std::pair<std::uint16_t, int>, int> counts_;
    std::map<std::uint16_t, std::string> latestDevices_;
    std::set<std::pair<std::string, std::uint16_t>> held_;
    bool watchesMovements_ = false;
    bool watchesRawCodes_ = false;
};

} // namespace tavro::proof
