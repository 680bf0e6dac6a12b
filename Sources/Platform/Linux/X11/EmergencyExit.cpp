#include "Platform/Linux/X11/EmergencyExit.h"

#include "Platform/Linux/KeyCodes/EvdevKeyCodes.h"

#include <algorithm>
#include <cstdint>

namespace tavro::x11 {

namespace {

struct KeyNumbers {
    std::uint32_t evdevCode;
    std::uint32_t symbol;
};

constexpr KeyNumbers leftShift{42, 0xFFE1};
constexpr KeyNumbers rightShift{54, 0xFFE2};
constexpr KeyNumbers escape{1, 0xFF1B};

void addPlace(KeySet& keys, KeyNumbers numbers) {
    keys.set(numbers.evdevCode + linuxos::EvdevKeyCodes::scanCodeOffset);
}

void addSymbol(KeySet& keys, KeyNumbers numbers, const KeyboardDescription& description) {
    for (std::size_t key = 0; key < keys.size(); ++key) {
        const auto symbols = description.symbolsOf(static_cast<std::uint8_t>(key));
        // What the key types alone; a second or third level is reached by other combinations.
        if (!symbols.empty() && symbols.front() == numbers.symbol) {
            keys.set(key);
        }
    }
}

} // namespace

EmergencyExit::EmergencyExit() {
    addPlace(leftShift_, leftShift);
    addPlace(rightShift_, rightShift);
    addPlace(escape_, escape);
}

EmergencyExit::EmergencyExit(const KeyboardDescription& description) : EmergencyExit() {
    addSymbol(leftShift_, leftShift, description);
    addSymbol(rightShift_, rightShift, description);
    addSymbol(escape_, escape, description);
}

bool EmergencyExit::isHeld(const KeySet& heldKeys) const {
    return (heldKeys & leftShift_).any() && (heldKeys & rightShift_).any() && (heldKeys & escape_).any();
}

} // namespace tavro::x11
