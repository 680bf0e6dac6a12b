#pragma once

#include "Platform/Linux/X11/KeyboardDescription.h"
#include "Platform/Linux/X11/Repeat/KeySet.h"
#include "PlatformInterfaces/HotkeyModifiers.h"

#include <cstdint>
#include <vector>

namespace tavro::x11 {

/// Which of the eight modifier bits of X events mean what. Shift, Lock and Control are fixed; which bits Alt,
/// AltGr and Super have, the symbols on the modifier keys tell. All others lock something (Num Lock, and
/// Scroll Lock on keyboards where it lights a lamp) or choose among symbols, and change nothing of what a key
/// is here.
class ModifierMap {
public:
    /// The bits as they nearly always are, without knowledge of any key.
    ModifierMap() = default;

    explicit ModifierMap(const KeyboardDescription& description);

    /// The modifiers in an event's bits. AltGr counts as option, the locks as nothing.
    [[nodiscard]] HotkeyModifiers modifiers(std::uint32_t bits) const;

    /// Every combination of bits that means exactly these modifiers, with and without each lock.
    [[nodiscard]] std::vector<std::uint32_t> variants(HotkeyModifiers modifiers) const;

    /// The modifiers of which these keys are held, locks left out.
    [[nodiscard]] HotkeyModifiers modifiersOfHeldKeys(const KeySet& heldKeys) const;

    /// The keys that only modify others.
    [[nodiscard]] const KeySet& modifierKeys() const { return modifierKeys_; }

    friend bool operator==(const ModifierMap&, const ModifierMap&) = default;

private:
    struct KeyBits {
        std::uint8_t key = 0;
        std::uint32_t bits = 0;

        friend bool operator==(const KeyBits&, const KeyBits&) = default;
    };

    std::uint32_t alt_ = 1U << 3;
    std::uint32_t altGr_ = 1U << 7;
    std::uint32_t super_ = 1U << 6;
    /// Those that mean nothing.
    std::uint32_t locks_ = (1U << 1) | (1U << 4);
    KeySet modifierKeys_;
    std::vector<KeyBits> bitsOfKeys_;
};

} // namespace tavro::x11
