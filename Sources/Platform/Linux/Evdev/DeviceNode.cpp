#include "Platform/Linux/Evdev/DeviceNode.h"

#include "Platform/Linux/Evdev/DeviceSeat.h"
#include "Platform/Linux/Evdev/KeyboardShape.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <system_error>

#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace tavro::evdev {

namespace {

constexpr std::string_view namePrefix = "event";

std::optional<std::string> contentOf(const std::string& path) {
    std::ifstream file(path);
    if (!file) {
        return std::nullopt;
    }
    return std::string(std::istreambuf_iterator<char>(file), {});
}

} // namespace

std::optional<std::vector<DeviceNode>> DeviceNode::list(const std::string& folder) {
    std::error_code error;
    std::filesystem::directory_iterator entry(folder, error);
    std::vector<DeviceNode> nodes;
    while (!error && entry != std::filesystem::directory_iterator()) {
        if (entry->path().filename().string().starts_with(namePrefix)) {
            nodes.emplace_back(entry->path().string());
        }
        entry.increment(error);
    }
    if (error) {
        return std::nullopt;
    }
    return nodes;
}

DeviceNode::Kind DeviceNode::kind(const std::string& seat) const {
    struct stat status{};
    if (stat(path_.c_str(), &status) != 0 || !S_ISCHR(status.st_mode)) {
        return Kind::other;
    }
    const auto folder = "/sys/dev/char/" + std::to_string(major(status.st_rdev)) + ':' +
                        std::to_string(minor(status.st_rdev)) + "/device/";
    if (contentOf(folder + "phys").value_or("").starts_with(copyMark)) {
        return Kind::other;
    }
    const auto keys = KeyboardShape::parse(contentOf(folder + "capabilities/key").value_or(""));
    if (keys && !KeyboardShape::isKeyboard(*keys)) {
        return Kind::other;
    }
    const auto itsSeat = DeviceSeat::of(status.st_rdev);
    if (!itsSeat) {
        return Kind::unsettled;
    }
    if (*itsSeat != seat) {
        return Kind::other;
    }
    return keys ? Kind::keyboard : Kind::unknown;
}

} // namespace tavro::evdev
