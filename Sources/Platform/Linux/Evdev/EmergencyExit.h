#pragma once

#include "Platform/Linux/Evdev/KeySet.h"

namespace tavro::evdev {

/// The way out of the capture: both Shift keys and Escape held together, by their places.
class EmergencyExit {
public:
    EmergencyExit() = delete;

    [[nodiscard]] static bool isHeld(const KeySet& heldKeys) {
        return heldKeys.test(KEY_LEFTSHIFT) && heldKeys.test(KEY_RIGHTSHIFT) && heldKeys.test(KEY_ESC);
    }
};

} // namespace tavro::evdev
