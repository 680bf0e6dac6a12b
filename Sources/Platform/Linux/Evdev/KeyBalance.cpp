#include "Platform/Linux/Evdev/KeyBalance.h"

#include "Platform/Linux/Evdev/HeldModifiers.h"

namespace tavro::evdev {

using Type = KeyboardTap::Event::Type;

bool KeyBalance::take(std::uint32_t evdevCode, std::int32_t value, bool isGrabbed, const Tell& tell) {
    if (evdevCode >= held_.size()) {
        return false;
    }
    if (value == 0) {
        return takeRelease(evdevCode, isGrabbed, tell);
    }
    if (value == 1 && !held_.test(evdevCode)) {
        return takePress(evdevCode, isGrabbed, tell);
    }
    if (told_.test(evdevCode)) {
        tell({evdevCode, Type::keyDown, true, isGrabbed});
    }
    return false;
}

bool KeyBalance::takePress(std::uint32_t evdevCode, bool isGrabbed, const Tell& tell) {
    held_.set(evdevCode);
    auto isSwallowed = false;
    if (!HeldModifiers::isModifier(evdevCode)) {
        const auto verdict = tell({evdevCode, Type::keyDown, false, isGrabbed});
        told_.set(evdevCode, verdict.has_value());
        isSwallowed = verdict == KeyboardTap::Verdict::swallow;
    }
    passedOn_.set(evdevCode, isGrabbed && !isSwallowed);
    return passedOn_.test(evdevCode);
}

bool KeyBalance::takeRelease(std::uint32_t evdevCode, bool isGrabbed, const Tell& tell) {
    held_.reset(evdevCode);
    if (told_.test(evdevCode)) {
        told_.reset(evdevCode);
        tell({evdevCode, Type::keyUp, false, isGrabbed});
    }
    const auto wasPassedOn = passedOn_.test(evdevCode);
    passedOn_.reset(evdevCode);
    return wasPassedOn;
}

} // namespace tavro::evdev
