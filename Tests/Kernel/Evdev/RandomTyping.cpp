#include "RandomTyping.h"

#include "ScriptedClient.h"

#include <algorithm>
#include <iterator>

namespace tavro::proof {

namespace {

constexpr std::array<std::uint16_t, 12> playingKeys{KEY_A, KEY_S, KEY_D, KEY_F, KEY_Q, KEY_W,
                                                    KEY_1, KEY_2, KEY_Z, KEY_X, KEY_P, KEY_J};
constexpr std::array<std::uint16_t, 6> otherKeys{KEY_ENTER, KEY_TAB, KEY_LEFT, KEY_SPACE, KEY_F1, KEY_KP5};

struct Modifier {
    std::uint16_t key;
    char letter;
};

/// In the order in which the client tells them. One Shift only, or the way out would be taken by chance.
constexpr std::array<Modifier, 5> modifiers{Modifier{KEY_LEFTSHIFT, 'S'}, Modifier{KEY_LEFTCTRL, 'C'},
                                            Modifier{KEY_LEFTALT, 'A'}, Modifier{KEY_RIGHTALT, 'A'},
                                            Modifier{KEY_LEFTMETA, 'M'}};
constexpr std::size_t mostHeld = 6;

bool isModifier(std::uint16_t key) {
    return std::ranges::find(modifiers, key, &Modifier::key) != modifiers.end();
}

} // namespace

RandomTyping::RandomTyping(TestKeyboard& first, TestKeyboard& second, std::uint32_t seed)
    : keyboards_{&first, &second}, random_(seed) {}

void RandomTyping::step() {
    const auto isFull = held_.size() >= mostHeld;
    if (!held_.empty() && (isFull || below(2) == 0)) {
        release(std::next(held_.begin(), static_cast<std::ptrdiff_t>(below(held_.size())))->first);
        return;
    }
    const auto kind = below(20);
    const auto code = kind < 11   ? playingKeys[below(playingKeys.size())]
                      : kind < 17 ? otherKeys[below(otherKeys.size())]
                                  : modifiers[below(modifiers.size())].key;
    const Key key{keyboards_[below(keyboards_.size())], code};
    if (held_.contains(key)) {
        release(key);
    } else {
        press(key);
    }
}

void RandomTyping::releaseAll() {
    while (!held_.empty()) {
        release(held_.begin()->first);
    }
}

void RandomTyping::press(Key key) {
    const auto [keyboard, code] = key;
    const auto words = heldModifiers();
    const auto isCommand = words.find_first_of("CAM") != std::string::npos;
    const auto isSwallowed = ScriptedClient::isPlayingKey(code) && !isCommand;
    if (!isModifier(code)) {
        told_.push_back("down " + std::to_string(code) + words + (isSwallowed ? "!" : ""));
    }
    held_[key] = isSwallowed;
    ++presses_;
    expectSeen(key, 1);
    keyboard->press(code);
}

void RandomTyping::release(Key key) {
    const auto [keyboard, code] = key;
    if (!isModifier(code)) {
        told_.push_back("up " + std::to_string(code) + heldModifiers());
    }
    expectSeen(key, 0);
    held_.erase(key);
    keyboard->release(code);
}

void RandomTyping::expectSeen(Key key, int value) {
    if (!held_.at(key)) {
        seen_.push_back(key.first->name() + "' " + std::to_string(key.second) + ' ' + std::to_string(value));
    }
}

std::string RandomTyping::heldModifiers() const {
    std::string letters;
    for (const auto& modifier : modifiers) {
        const auto isHeld =
            std::ranges::any_of(held_, [&](const auto& entry) { return entry.first.second == modifier.key; });
        if (isHeld && !letters.ends_with(modifier.letter)) {
            letters += modifier.letter;
        }
    }
    return letters.empty() ? letters : ' ' + letters;
}

std::size_t RandomTyping::below(std::size_t end) {
    // Not a distribution: what those give for a seed is the library's own affair.
    return random_() % end;
}

} // namespace tavro::proof
