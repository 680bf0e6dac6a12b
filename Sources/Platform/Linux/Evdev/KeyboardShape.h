#pragma once

#include "Platform/Linux/Evdev/KeySet.h"

#include <climits>
#include <cstddef>
#include <optional>
#include <string_view>

namespace tavro::evdev {

/// Tells keyboards by the keys they have: power buttons, mice with extra keys and remote controls are none.
class KeyboardShape {
public:
    KeyboardShape() = delete;

    /// How many bits one word of the kernel's lists has.
    static constexpr std::size_t wordBits = sizeof(unsigned long) * CHAR_BIT;

    /// Whether a device with these keys can be typed on: it has all letters, Space and Return.
    [[nodiscard]] static bool isKeyboard(const KeySet& keys);

    /// The keys in a list as the kernel prints it: hexadecimal words, the highest first, separated by spaces.
    /// Nothing when the text is no such list.
    [[nodiscard]] static std::optional<KeySet> parse(std::string_view text);
};

} // namespace tavro::evdev
