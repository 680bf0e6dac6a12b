#include "KeyboardInput/ToggleHotkey.h"

#include "KeyboardMapping/PhysicalKeyMapper.h"
#include "PerformanceModel/Text.h"

#include <string>

namespace tavro {

Character ToggleHotkey::characterOf(std::string_view text) {
    auto characters = charactersOf(text).value_or(std::u32string());
    while (!characters.empty() && isWhiteSpace(characters.back())) {
        characters.pop_back();
    }
    return characters.empty() ? U'^' : lowercased(characters.back());
}

bool ToggleHotkey::isCaretKey(std::int64_t keyCode) {
    return keyCode == 10 || keyCode == 50;
}

bool ToggleHotkey::matches(std::int64_t pressedKeyCode, HotkeyModifiers pressedModifiers,
                           KeyboardLayoutKind layoutKind) const {
    if (pressedModifiers != modifiers) {
        return false;
    }
    if (keyCode) {
        return pressedKeyCode == *keyCode;
    }
    if (character == U'^') {
        return isCaretKey(pressedKeyCode);
    }
    return PhysicalKeyMapper::character(pressedKeyCode, layoutKind) == character;
}

} // namespace tavro
