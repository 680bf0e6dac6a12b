#pragma once

#include "Platform/Linux/X11/KeyboardDescription.h"
#include "Platform/Linux/X11/Repeat/KeySet.h"

namespace tavro::x11 {

/// The way out of the capture: both Shift keys and Escape held together. The keys count by their places and
/// by their symbols, so that it is found whatever the layout has made of them.
class EmergencyExit {
public:
    /// By the places alone.
    EmergencyExit();

    explicit EmergencyExit(const KeyboardDescription& description);

    [[nodiscard]] bool isHeld(const KeySet& heldKeys) const;

private:
    KeySet leftShift_;
    KeySet rightShift_;
    KeySet escape_;
};

} // namespace tavro::x11
