#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace tavro::x11 {

class Connection;

/// What the server says about its keys: their symbols, and which of them are modifier keys.
struct KeyboardDescription {
    std::uint8_t firstKey = 8;
    /// At least 1.
    std::size_t symbolsPerKey = 1;
    /// `symbolsPerKey` for each key, beginning with `firstKey`; 0 where there is none.
    std::vector<std::uint32_t> symbols;
    std::size_t keysPerModifier = 0;
    /// `keysPerModifier` key codes for each of the eight modifiers, beginning with Shift; 0 for none.
    std::vector<std::uint8_t> modifierKeys;

    /// Asks the server, which takes a round trip. Nothing when it does not answer.
    [[nodiscard]] static std::optional<KeyboardDescription> read(const Connection& connection);

    /// Empty for a key that does not exist.
    [[nodiscard]] std::span<const std::uint32_t> symbolsOf(std::uint8_t key) const;

    /// The modifier's key codes, 0 for none. The modifier is 0 for Shift to 7 for Mod5.
    [[nodiscard]] std::span<const std::uint8_t> keysOfModifier(std::size_t modifier) const;
};

} // namespace tavro::x11
