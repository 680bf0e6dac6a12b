#include "Platform/Linux/Evdev/GrabbedKeyboard.h"

#include <utility>

namespace tavro::evdev {

namespace {

input_event synchronization() {
    input_event event{};
    event.type = EV_SYN;
    event.code = SYN_REPORT;
    return event;
}

} // namespace

GrabbedKeyboard::GrabbedKeyboard(std::unique_ptr<KeyboardDevice> device, const std::string& uinputPath)
    : device_(std::move(device)), copy_(VirtualKeyboard::copyOf(*device_, uinputPath)),
      balance_(device_->initiallyHeld()) {
    if (copy_) {
        copy_->takeStateOf(*device_);
    }
}

GrabbedKeyboard::~GrabbedKeyboard() {
    frame_.clear();
    for (std::size_t code = 0; code < balance_.passedOn().size(); ++code) {
        if (balance_.passedOn().test(code)) {
            input_event release{};
            release.type = EV_KEY;
            release.code = static_cast<std::uint16_t>(code);
            frame_.push_back(release);
        }
    }
    finishFrame();
}

std::optional<std::int64_t> GrabbedKeyboard::timeOfNext() {
    const auto* const event = device_->next();
    return event == nullptr ? std::nullopt : std::optional(KeyboardDevice::timeOf(*event));
}

void GrabbedKeyboard::takeNext(const KeyBalance::Tell& tell) {
    const auto event = *device_->next();
    device_->take();
    const auto isOurs = span_.contains(KeyboardDevice::timeOf(event));
    if (event.type == EV_KEY) {
        takeKey(event, isOurs, tell);
    } else if (event.type == EV_SYN && (event.code == SYN_REPORT || event.code == SYN_DROPPED)) {
        finishFrame();
    } else if (event.type == EV_MSC && event.code == MSC_SCAN) {
        rawCode_ = isOurs ? std::optional(event) : std::nullopt;
    } else if (isOurs && (event.type == EV_SYN || event.type == EV_REL || event.type == EV_ABS ||
                          event.type == EV_SW || event.type == EV_MSC)) {
        add(event);
    }
}

void GrabbedKeyboard::takeKey(const input_event& event, bool isOurs, const KeyBalance::Tell& tell) {
    const auto rawCode = std::exchange(rawCode_, std::nullopt);
    if (balance_.take(event.code, event.value, isOurs, tell)) {
        if (rawCode) {
            add(*rawCode);
        }
        add(event);
    }
    if (isGrabbed() && !isOurs && event.value == 1) {
        // It went down just before the grab, and the others, who know the press, wait for its release.
        ungrab();
    }
}

void GrabbedKeyboard::add(const input_event& event) {
    frame_.push_back(event);
}

void GrabbedKeyboard::finishFrame() {
    if (const auto rawCode = std::exchange(rawCode_, std::nullopt)) {
        add(*rawCode);
    }
    if (copy_ && !frame_.empty()) {
        frame_.push_back(synchronization());
        copy_->write(frame_);
    }
    frame_.clear();
}

void GrabbedKeyboard::takeSettings() {
    if (!copy_) {
        return;
    }
    const auto settings = copy_->takeSettings();
    // Ungrabbed, the keyboard gets them from the system itself.
    if (isGrabbed() && !settings.empty()) {
        device_->write(settings);
    }
}

std::optional<std::chrono::microseconds> GrabbedKeyboard::settle(bool isGrabWanted) {
    if (!copy_ || isGrabWanted == isGrabbed() || balance_.held().any()) {
        return std::nullopt;
    }
    const std::chrono::microseconds age(KeyboardDevice::now() - copy_->creationTime());
    if (age < settlingTime) {
        return settlingTime - age;
    }
    // The latest events are still to be read; another call follows them.
    if (device_->hasKeysDown()) {
        return std::nullopt;
    }
    if (!isGrabWanted) {
        ungrab();
        return std::nullopt;
    }
    // Another program that has grabbed it may give it back without any event.
    return grab() ? std::nullopt : std::optional(settlingTime);
}

bool GrabbedKeyboard::grab() {
    if (!device_->grab()) {
        return false;
    }
    span_.begin(KeyboardDevice::now());
    copy_->takeStateOf(*device_);
    return true;
}

void GrabbedKeyboard::ungrab() {
    span_.end(KeyboardDevice::now());
    device_->ungrab();
}

} // namespace tavro::evdev
