#pragma once

#include "PerformanceModel/Character.h"
#include "PerformanceModel/KeyboardLayoutKind.h"
#include "PlatformInterfaces/HotkeyModifiers.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavro {

/// The key that toggles Global Play, how a key press is told to be it, and how it is kept from one run to the
/// next.
struct ToggleHotkey {
    /// Lower case. Decides only without a key code.
    Character character = U'^';
    /// The physical key; when present, it alone decides.
    std::optional<std::int64_t> keyCode;
    /// Every bit is kept, known or not.
    HotkeyModifiers modifiers;

    /// The character of a hotkey given as text: its last one, in lower case, white space around the text
    /// left out; "^" when nothing is left.
    [[nodiscard]] static Character characterOf(std::string_view text);

    /// Whether this is one of the two physical keys that count as the caret key: the one left of 1 and the
    /// one beside the left Shift. Which of them carries it differs between ISO and ANSI keyboards.
    [[nodiscard]] static bool isCaretKey(std::int64_t keyCode);

    /// Whether a press of this key with exactly these modifiers is the hotkey.
    [[nodiscard]] bool matches(std::int64_t pressedKeyCode, HotkeyModifiers pressedModifiers,
                               KeyboardLayoutKind layoutKind) const;

    /// JSON on one line without white space:
    ///
    ///     {"key":"k","keyCode":40,"modifiersRawValue":6}
    ///
    /// The key code is left out when there is none.
    [[nodiscard]] std::string encode() const;

    /// The key may be any text, which `characterOf` reads. Nothing when the text is not JSON, a field is
    /// missing or one has the wrong type.
    [[nodiscard]] static std::optional<ToggleHotkey> decode(std::string_view json);

    friend bool operator==(const ToggleHotkey&, const ToggleHotkey&) = default;
};

} // namespace tavro
