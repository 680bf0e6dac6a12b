#pragma once

#include "Platform/Linux/Evdev/KeySet.h"
#include "PlatformInterfaces/HotkeyModifiers.h"

#include <cstdint>

namespace tavro::evdev {

/// The modifier keys among the keys that are held.
class HeldModifiers {
public:
    HeldModifiers() = delete;

    [[nodiscard]] static bool isModifier(std::uint32_t evdevCode);

    /// Left and right count alike; AltGr is option too.
    [[nodiscard]] static HotkeyModifiers of(const KeySet& heldKeys);
};

} // namespace tavro::evdev
