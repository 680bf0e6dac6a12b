#include "Platform/Linux/Evdev/KeyboardTapAdapter.h"

#include "Platform/Linux/Evdev/AccessSteps.h"
#include "Platform/Linux/Evdev/CaptureThread.h"
#include "Platform/Linux/Evdev/DeviceAccess.h"

#include <system_error>
#include <utility>

namespace tavro::evdev {

KeyboardTapAdapter::KeyboardTapAdapter(InputDevices devices, guard::GuardProcess* guard)
    : devices_(std::move(devices)), guard_(guard) {}

KeyboardTapAdapter::~KeyboardTapAdapter() = default;

bool KeyboardTapAdapter::isTrusted(bool /*prompts*/) {
    return DeviceAccess::isAllowed(devices_);
}

bool KeyboardTapAdapter::create(Client& client) {
    dispose();
    if (!DeviceAccess::canCapture(devices_)) {
        return false;
    }
    try {
        thread_ = std::make_unique<CaptureThread>(client, devices_, guard_);
    } catch (const std::system_error&) {
        return false;
    }
    return true;
}

void KeyboardTapAdapter::enable(bool isOn) {
    if (thread_) {
        thread_->enable(isOn);
    }
}

void KeyboardTapAdapter::updateVerdicts() {
    if (thread_) {
        thread_->updateVerdicts();
    }
}

void KeyboardTapAdapter::dispose() {
    thread_.reset();
}

std::string KeyboardTapAdapter::adviceOnTrust() const {
    return AccessSteps::now(devices_).advice();
}

} // namespace tavro::evdev
