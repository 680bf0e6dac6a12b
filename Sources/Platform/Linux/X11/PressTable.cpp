#include "Platform/Linux/X11/PressTable.h"

#include "Platform/Linux/KeyCodes/EvdevKeyCodes.h"

#include <algorithm>
#include <tuple>

namespace tavro::x11 {

namespace {

constexpr std::int64_t modifierSetCount = 16;

std::uint16_t bitOf(HotkeyModifiers modifiers) {
    return static_cast<std::uint16_t>(1U << modifiers.rawValue());
}

} // namespace

KeyboardTap::Event PressTable::press(std::uint8_t key, HotkeyModifiers modifiers) {
    using linuxos::EvdevKeyCodes;
    return {.type = KeyboardTap::Event::Type::keyDown,
            .keyCode = EvdevKeyCodes::virtualKeyCode(key - EvdevKeyCodes::scanCodeOffset),
            .modifiers = modifiers,
            .isAutorepeat = false};
}

PressTable PressTable::wanted(const KeyboardTap::Client& client, const KeySet& keys) {
    PressTable table;
    for (std::size_t key = linuxos::EvdevKeyCodes::scanCodeOffset; key < keys.size(); ++key) {
        if (!keys.test(key)) {
            continue;
        }
        auto event = press(static_cast<std::uint8_t>(key), {});
        for (std::int64_t set = 0; set < modifierSetCount; ++set) {
            event.modifiers = HotkeyModifiers(set);
            if (client.verdict(event) == KeyboardTap::Verdict::swallow) {
                table.insert(static_cast<std::uint8_t>(key), event.modifiers);
            }
        }
    }
    return table;
}

bool PressTable::contains(std::uint8_t key, HotkeyModifiers modifiers) const {
    return (sets_.at(key) & bitOf(modifiers)) != 0;
}

void PressTable::insert(std::uint8_t key, HotkeyModifiers modifiers) {
    sets_.at(key) |= bitOf(modifiers);
}

void PressTable::remove(std::uint8_t key, HotkeyModifiers modifiers) {
    sets_.at(key) &= static_cast<std::uint16_t>(~bitOf(modifiers));
}

PressTable PressTable::without(const PressTable& other) const {
    PressTable rest;
    for (std::size_t key = 0; key < sets_.size(); ++key) {
        rest.sets_.at(key) = static_cast<std::uint16_t>(sets_.at(key) & ~other.sets_.at(key));
    }
    return rest;
}

std::vector<HotkeyModifiers> PressTable::modifiersOf(std::uint8_t key) const {
    std::vector<HotkeyModifiers> found;
    if (!containsAnyOf(key)) {
        return found;
    }
    for (std::int64_t set = 0; set < modifierSetCount; ++set) {
        if (contains(key, HotkeyModifiers(set))) {
            found.emplace_back(set);
        }
    }
    return found;
}

KeySet PressTable::playingKeys() const {
    const auto both = bitOf({}) | bitOf(HotkeyModifiers::shift);
    KeySet keys;
    for (std::size_t key = 0; key < sets_.size(); ++key) {
        keys.set(key, (sets_.at(key) & both) == both);
    }
    return keys;
}

std::vector<KeyboardTap::Event> PressTable::presses() const {
    std::vector<KeyboardTap::Event> found;
    for (std::size_t key = linuxos::EvdevKeyCodes::scanCodeOffset; key < sets_.size(); ++key) {
        for (const auto modifiers : modifiersOf(static_cast<std::uint8_t>(key))) {
            found.push_back(press(static_cast<std::uint8_t>(key), modifiers));
        }
    }
    std::ranges::sort(found, {}, [](const KeyboardTap::Event& event) {
        return std::tuple(event.keyCode, event.modifiers.rawValue());
    });
    return found;
}

} // namespace tavro::x11
