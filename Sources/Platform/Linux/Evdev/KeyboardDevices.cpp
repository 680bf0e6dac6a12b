#include "Platform/Linux/Evdev/KeyboardDevices.h"

#include "Platform/Linux/Evdev/DeviceNode.h"

#include <algorithm>
#include <utility>

namespace tavro::evdev {

namespace {

using namespace std::chrono_literals;

constexpr auto pauseBetweenLooks = 50ms;
/// Ten seconds: the system's rules for a device may run programs.
constexpr int mostLooks = 200;

void tellReleasesOf(const GrabbedKeyboard& keyboard, const KeyBalance::Tell& tell) {
    const auto& told = keyboard.keys().told();
    for (std::uint32_t code = 0; code < told.size(); ++code) {
        if (told.test(code)) {
            tell({.evdevCode = code, .type = KeyboardTap::Event::Type::keyUp});
        }
    }
}

} // namespace

KeyboardDevices::KeyboardDevices(InputDevices devices)
    : devices_(std::move(devices)), watch_(devices_.folder) {
    looksLeft_ = mostLooks;
    join();
}

void KeyboardDevices::addDescriptors(std::vector<pollfd>& descriptors) const {
    descriptors.push_back({.fd = watch_.descriptor(), .events = POLLIN, .revents = 0});
    for (const auto& keyboard : keyboards_) {
        descriptors.push_back({.fd = keyboard->device().descriptor(), .events = POLLIN, .revents = 0});
        descriptors.push_back({.fd = keyboard->copyDescriptor(), .events = POLLIN, .revents = 0});
    }
}

void KeyboardDevices::addFiles(std::vector<int>& devices, std::vector<int>& copies) const {
    for (const auto& keyboard : keyboards_) {
        devices.push_back(keyboard->device().descriptor());
        if (keyboard->copyDescriptor() >= 0) {
            copies.push_back(keyboard->copyDescriptor());
        }
    }
}

bool KeyboardDevices::takeNext(const Tell& tell) {
    GrabbedKeyboard* earliest = nullptr;
    std::optional<std::int64_t> earliestTime;
    for (const auto& keyboard : keyboards_) {
        const auto time = keyboard->timeOfNext();
        if (time && (!earliestTime || *time < *earliestTime)) {
            earliest = keyboard.get();
            earliestTime = time;
        }
    }
    if (earliest == nullptr) {
        removeGone(tell);
        return false;
    }
    earliest->takeNext(tell);
    return true;
}

void KeyboardDevices::removeGone(const Tell& tell) {
    auto isGone = [](const auto& keyboard) { return keyboard->device().isGone(); };
    for (auto gone = std::ranges::find_if(keyboards_, isGone); gone != keyboards_.end();
         gone = std::ranges::find_if(keyboards_, isGone)) {
        // Out of the list first: its modifiers are not held any more.
        const auto keyboard = std::move(*gone);
        keyboards_.erase(gone);
        tellReleasesOf(*keyboard, tell);
    }
}

void KeyboardDevices::takeNotices() {
    for (const auto& keyboard : keyboards_) {
        keyboard->takeSettings();
    }
    switch (watch_.take()) {
    case FolderWatch::Notice::nothing:
        break;
    case FolderWatch::Notice::changed:
        looksLeft_ = mostLooks;
        join();
        break;
    case FolderWatch::Notice::lost:
        isLost_ = true;
        break;
    }
}

void KeyboardDevices::join() {
    const auto nodes = DeviceNode::list(devices_.folder);
    if (!nodes) {
        isLost_ = true;
        return;
    }
    bool isUnsettled = false;
    for (const auto& node : *nodes) {
        const auto isKnown = std::ranges::any_of(
            keyboards_, [&](const auto& keyboard) { return keyboard->device().path() == node.path(); });
        const auto kind = isKnown ? DeviceNode::Kind::other : node.kind(devices_.seat);
        isUnsettled = isUnsettled || kind == DeviceNode::Kind::unsettled;
        if (kind != DeviceNode::Kind::keyboard && kind != DeviceNode::Kind::unknown) {
            continue;
        }
        if (auto device = KeyboardDevice::open(node.path())) {
            keyboards_.push_back(std::make_unique<GrabbedKeyboard>(std::move(device), devices_.uinputPath));
        }
    }
    looksLeft_ = isUnsettled ? looksLeft_ - 1 : 0;
}

std::optional<std::chrono::microseconds> KeyboardDevices::settle(bool isGrabWanted) {
    std::optional<std::chrono::microseconds> wait;
    if (looksLeft_ > 0) {
        // What the system still does with a new device is not told in its folder.
        join();
        wait = pauseBetweenLooks;
    }
    for (const auto& keyboard : keyboards_) {
        const auto itsWait = keyboard->settle(isGrabWanted);
        if (itsWait && (!wait || *itsWait < *wait)) {
            wait = itsWait;
        }
    }
    return wait;
}

KeySet KeyboardDevices::held() const {
    KeySet held;
    for (const auto& keyboard : keyboards_) {
        held |= keyboard->keys().held();
    }
    return held;
}

void KeyboardDevices::tellReleases(const Tell& tell) const {
    for (const auto& keyboard : keyboards_) {
        tellReleasesOf(*keyboard, tell);
    }
}

} // namespace tavro::evdev
