#pragma once

#include "Platform/Linux/X11/KeyboardDescription.h"

#include <cstdint>
#include <vector>

namespace tavro::x11 {

/// Descriptions of keyboards for tests, made key by key.
class KeyboardDescriptions {
public:
    KeyboardDescriptions() = delete;

    struct Key {
        std::uint8_t key = 0;
        std::vector<std::uint32_t> symbols;
    };

    struct Modifier {
        std::size_t modifier = 0;
        std::vector<std::uint8_t> keys;
    };

    /// What a server says of the keyboard that most people have.
    [[nodiscard]] static KeyboardDescription usual() {
        return make({{9, {0xFF1B}},
                     {37, {0xFFE3}},
                     {38, {'a', 'A'}},
                     {50, {0xFFE1}},
                     {62, {0xFFE2}},
                     {64, {0xFFE9, 0xFFE7}},
                     {66, {0xFFE5}},
                     {77, {0xFF7F}},
                     {92, {0xFE03}},
                     {133, {0xFFEB}},
                     {134, {0xFFEC}}},
                    {{0, {50, 62}}, {1, {66}}, {2, {37}}, {3, {64}}, {4, {77}}, {6, {133, 134}}, {7, {92}}});
    }

    [[nodiscard]] static KeyboardDescription make(const std::vector<Key>& keys,
                                                  const std::vector<Modifier>& modifiers) {
        constexpr std::size_t width = 4;
        constexpr std::size_t firstKey = 8;
        KeyboardDescription made{.firstKey = firstKey,
                                 .symbolsPerKey = width,
                                 .symbols = std::vector<std::uint32_t>((256 - firstKey) * width),
                                 .keysPerModifier = width,
                                 .modifierKeys = std::vector<std::uint8_t>(8 * width)};
        for (const auto& key : keys) {
            for (std::size_t level = 0; level < key.symbols.size(); ++level) {
                made.symbols.at((key.key - firstKey) * width + level) = key.symbols.at(level);
            }
        }
        for (const auto& modifier : modifiers) {
            for (std::size_t place = 0; place < modifier.keys.size(); ++place) {
                made.modifierKeys.at(modifier.modifier * width + place) = modifier.keys.at(place);
            }
        }
        return made;
    }
};

} // namespace tavro::x11
