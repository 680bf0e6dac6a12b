#pragma once

#include <cstdint>
#include <string>

namespace tavro {

/// How modifier keys are written for the user.
enum class ModifierNaming {
    /// The Mac's symbols, without separators.
    symbols,
    /// The words on other keyboards, each followed by a plus sign.
    words,
};

/// The modifier keys of a hotkey, as a set of bits. Command stands for the Super key and option for Alt where
/// keyboards name them so.
class HotkeyModifiers {
public:
    constexpr HotkeyModifiers() = default;

    constexpr explicit HotkeyModifiers(std::int64_t rawValue) : rawValue_(rawValue) {}

    static const HotkeyModifiers command;
    static const HotkeyModifiers control;
    static const HotkeyModifiers option;
    static const HotkeyModifiers shift;

    [[nodiscard]] constexpr std::int64_t rawValue() const { return rawValue_; }

    [[nodiscard]] constexpr bool contains(HotkeyModifiers other) const {
        return (rawValue_ & other.rawValue_) == other.rawValue_;
    }

    /// Whether a modifier is held that makes a key a command instead of something to play: any but Shift.
    [[nodiscard]] constexpr bool makesShortcut() const { return (rawValue_ & (1 | 2 | 4)) != 0; }

    /// What stands before the key when the hotkey is shown, in the fixed order control, option, shift,
    /// command; empty without modifiers.
    [[nodiscard]] std::string displayPrefix(ModifierNaming naming = ModifierNaming::symbols) const;

    constexpr HotkeyModifiers& operator|=(HotkeyModifiers other) {
        rawValue_ |= other.rawValue_;
        return *this;
    }

    friend constexpr HotkeyModifiers operator|(HotkeyModifiers left, HotkeyModifiers right) {
        return left |= right;
    }

    friend constexpr bool operator==(HotkeyModifiers, HotkeyModifiers) = default;

private:
    std::int64_t rawValue_ = 0;
};

inline constexpr HotkeyModifiers HotkeyModifiers::command{1};
inline constexpr HotkeyModifiers HotkeyModifiers::control{2};
inline constexpr HotkeyModifiers HotkeyModifiers::option{4};
inline constexpr HotkeyModifiers HotkeyModifiers::shift{8};

} // namespace tavro
