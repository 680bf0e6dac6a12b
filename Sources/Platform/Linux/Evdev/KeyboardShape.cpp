#include "Platform/Linux/Evdev/KeyboardShape.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <ranges>
#include <vector>

namespace tavro::evdev {

namespace {

constexpr std::array typingKeys{
    KEY_A, KEY_B, KEY_C, KEY_D, KEY_E, KEY_F, KEY_G, KEY_H, KEY_I, KEY_J, KEY_K, KEY_L, KEY_M,     KEY_N,
    KEY_O, KEY_P, KEY_Q, KEY_R, KEY_S, KEY_T, KEY_U, KEY_V, KEY_W, KEY_X, KEY_Y, KEY_Z, KEY_SPACE, KEY_ENTER,
};

} // namespace

bool KeyboardShape::isKeyboard(const KeySet& keys) {
    return std::ranges::all_of(typingKeys, [&](int key) { return keys.test(static_cast<std::size_t>(key)); });
}

std::optional<KeySet> KeyboardShape::parse(std::string_view text) {
    while (!text.empty() && text.back() == '\n') {
        text.remove_suffix(1);
    }
    std::vector<unsigned long> words;
    while (!text.empty()) {
        const auto word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(text.size(), word.size() + 1));
        unsigned long value = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value, 16);
        if (error != std::errc() || end != word.data() + word.size()) {
            return std::nullopt;
        }
        words.push_back(value);
    }
    if (words.empty()) {
        return std::nullopt;
    }
    KeySet keys;
    std::size_t first = 0;
    for (const auto word : words | std::views::reverse) {
        for (std::size_t bit = 0; bit < wordBits && first + bit < keys.size(); ++bit) {
            keys.set(first + bit, (word >> bit & 1) != 0);
        }
        first += wordBits;
    }
    return keys;
}

} // namespace tavro::evdev
