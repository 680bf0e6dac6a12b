#include "Platform/Linux/Evdev/HeldModifiers.h"

#include <algorithm>
#include <array>

namespace tavro::evdev {

namespace {

struct ModifierKey {
    std::uint32_t evdevCode;
    HotkeyModifiers modifier;
};

constexpr std::array modifierKeys{
    ModifierKey{KEY_LEFTSHIFT, HotkeyModifiers::shift},  ModifierKey{KEY_RIGHTSHIFT, HotkeyModifiers::shift},
    ModifierKey{KEY_LEFTCTRL, HotkeyModifiers::control}, ModifierKey{KEY_RIGHTCTRL, HotkeyModifiers::control},
    ModifierKey{KEY_LEFTALT, HotkeyModifiers::option},   ModifierKey{KEY_RIGHTALT, HotkeyModifiers::option},
    ModifierKey{KEY_LEFTMETA, HotkeyModifiers::command}, ModifierKey{KEY_RIGHTMETA, HotkeyModifiers::command},
};

} // namespace

bool HeldModifiers::isModifier(std::uint32_t evdevCode) {
    return std::ranges::find(modifierKeys, evdevCode, &ModifierKey::evdevCode) != modifierKeys.end();
}

HotkeyModifiers HeldModifiers::of(const KeySet& heldKeys) {
    HotkeyModifiers modifiers;
    for (const auto& key : modifierKeys) {
        if (heldKeys.test(key.evdevCode)) {
            modifiers |= key.modifier;
        }
    }
    return modifiers;
}

} // namespace tavro::evdev
