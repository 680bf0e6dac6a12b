#include "Platform/Linux/X11/ModifierMap.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <ranges>

namespace tavro::x11 {

namespace {

constexpr std::uint32_t shiftBit = 1U << 0;
constexpr std::uint32_t lockBit = 1U << 1;
constexpr std::uint32_t controlBit = 1U << 2;
constexpr std::size_t firstFreeModifier = 3;
constexpr std::size_t modifierCount = 8;

// The symbols' numbers, which never change.
constexpr std::uint32_t altLeft = 0xFFE9;
constexpr std::uint32_t altRight = 0xFFEA;
constexpr std::uint32_t superLeft = 0xFFEB;
constexpr std::uint32_t superRight = 0xFFEC;
constexpr std::uint32_t thirdLevelShift = 0xFE03;
constexpr std::uint32_t modeSwitch = 0xFF7E;

bool carries(const KeyboardDescription& description, std::size_t modifier,
             std::initializer_list<std::uint32_t> wanted) {
    return std::ranges::any_of(description.keysOfModifier(modifier), [&](std::uint8_t key) {
        return key != 0 && std::ranges::any_of(description.symbolsOf(key), [&](std::uint32_t symbol) {
                   return std::ranges::find(wanted, symbol) != wanted.end();
               });
    });
}

/// 0 when no modifier has a key with one of the symbols.
std::uint32_t bitOf(const KeyboardDescription& description, std::initializer_list<std::uint32_t> wanted) {
    for (auto modifier = firstFreeModifier; modifier < modifierCount; ++modifier) {
        if (carries(description, modifier, wanted)) {
            return 1U << modifier;
        }
    }
    return 0;
}

} // namespace

ModifierMap::ModifierMap(const KeyboardDescription& description)
    : alt_(bitOf(description, {altLeft, altRight})),
      altGr_(bitOf(description, {thirdLevelShift, modeSwitch})),
      super_(bitOf(description, {superLeft, superRight})), locks_(lockBit) {
    const auto meaningful = shiftBit | controlBit | alt_ | altGr_ | super_;
    for (std::size_t modifier = 0; modifier < modifierCount; ++modifier) {
        for (const auto key : description.keysOfModifier(modifier)) {
            if (key != 0) {
                locks_ |= (1U << modifier) & ~meaningful;
                modifierKeys_.set(key);
                bitsOfKeys_.push_back({key, 1U << modifier});
            }
        }
    }
}

HotkeyModifiers ModifierMap::modifiers(std::uint32_t bits) const {
    HotkeyModifiers found;
    const auto addIf = [&](std::uint32_t wanted, HotkeyModifiers modifier) {
        if ((bits & wanted) != 0) {
            found |= modifier;
        }
    };
    addIf(shiftBit, HotkeyModifiers::shift);
    addIf(controlBit, HotkeyModifiers::control);
    addIf(alt_ | altGr_, HotkeyModifiers::option);
    addIf(super_, HotkeyModifiers::command);
    return found;
}

std::vector<std::uint32_t> ModifierMap::variants(HotkeyModifiers wanted) const {
    std::vector<std::uint32_t> found;
    for (const auto altBits : std::array{0U, alt_, altGr_, alt_ | altGr_}) {
        // Every part of the locks' bits, from all of them down to none.
        for (auto lockBits = locks_;; lockBits = (lockBits - 1) & locks_) {
            const auto bits = altBits | lockBits | (wanted.contains(HotkeyModifiers::shift) ? shiftBit : 0) |
                              (wanted.contains(HotkeyModifiers::control) ? controlBit : 0) |
                              (wanted.contains(HotkeyModifiers::command) ? super_ : 0);
            // Leaves out what cannot be held, and the Alt bits where Alt is not wanted.
            if (modifiers(bits) == wanted) {
                found.push_back(bits);
            }
            if (lockBits == 0) {
                break;
            }
        }
    }
    std::ranges::sort(found);
    const auto repeated = std::ranges::unique(found);
    found.erase(repeated.begin(), repeated.end());
    return found;
}

HotkeyModifiers ModifierMap::modifiersOfHeldKeys(const KeySet& heldKeys) const {
    std::uint32_t bits = 0;
    for (const auto& [key, keyBits] : bitsOfKeys_) {
        if (heldKeys.test(key)) {
            bits |= keyBits;
        }
    }
    return modifiers(bits);
}

} // namespace tavro::x11
