#pragma once

#include "PerformanceModel/Character.h"
#include "PlatformInterfaces/HotkeyModifiers.h"

#include <cstdint>
#include <optional>

namespace tavro {

/// One press or release of a key that is no modifier key, as the platform's adapter reports it.
struct KeyEvent {
    enum class Type { keyDown, keyUp };

    Type type = Type::keyDown;
    /// The physical position, as the Mac's virtual key code.
    std::int64_t keyCode = 0;
    /// What the key types on the active input language without Control, Alt and Super, in lower case, when
    /// that is exactly one character.
    std::optional<Character> characterIgnoringModifiers;
    HotkeyModifiers modifiers;
    bool isAutorepeat = false;
    /// Milliseconds of the window system's clock, which may run over; 0 where it has none.
    std::uint32_t time = 0;

    friend bool operator==(const KeyEvent&, const KeyEvent&) = default;
};

} // namespace tavro
