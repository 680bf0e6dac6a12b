#pragma once

namespace tavro {

/// What a user has to allow so that Global Play sees the keyboard.
enum class KeyboardAccess {
    /// The program, in the system's Accessibility settings.
    accessibilitySettings,
    /// Nothing where the display server hands the keys out; elsewhere the user needs the input devices.
    displayOrInputDevices,
};

} // namespace tavro
