#pragma once

#include "Platform/Linux/X11/Repeat/KeySet.h"
#include "PlatformInterfaces/HotkeyModifiers.h"
#include "PlatformInterfaces/KeyboardTap.h"

#include <array>
#include <cstdint>
#include <vector>

namespace tavro::x11 {

/// A set of presses: of each key, with which modifiers.
class PressTable {
public:
    PressTable() = default;

    /// The presses of these keys that the client wants swallowed.
    [[nodiscard]] static PressTable wanted(const KeyboardTap::Client& client, const KeySet& keys);

    /// The press of a key as the client knows it.
    [[nodiscard]] static KeyboardTap::Event press(std::uint8_t key, HotkeyModifiers modifiers);

    [[nodiscard]] bool contains(std::uint8_t key, HotkeyModifiers modifiers) const;

    /// Whether there is any press of the key.
    [[nodiscard]] bool containsAnyOf(std::uint8_t key) const { return sets_.at(key) != 0; }

    void insert(std::uint8_t key, HotkeyModifiers modifiers);
    void remove(std::uint8_t key, HotkeyModifiers modifiers);

    /// What is in this one and not in the other.
    [[nodiscard]] PressTable without(const PressTable& other) const;

    /// The modifier sets of a key's presses, ascending by their raw values.
    [[nodiscard]] std::vector<HotkeyModifiers> modifiersOf(std::uint8_t key) const;

    /// The keys that are in with and without Shift. A hotkey is in with one set of modifiers only.
    [[nodiscard]] KeySet playingKeys() const;

    /// All presses, in the order of their virtual key codes.
    [[nodiscard]] std::vector<KeyboardTap::Event> presses() const;

    friend bool operator==(const PressTable&, const PressTable&) = default;

private:
    /// Of each key, a bit for each set of modifiers, at the set's raw value.
    std::array<std::uint16_t, 256> sets_{};
};

} // namespace tavro::x11
