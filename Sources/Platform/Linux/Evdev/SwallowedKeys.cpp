#include "Platform/Linux/Evdev/SwallowedKeys.h"

#include "Platform/Linux/Evdev/HeldModifiers.h"
#include "Platform/Linux/KeyCodes/EvdevKeyCodes.h"

namespace tavro::evdev {

namespace {

/// Behind these come buttons of mice and joysticks.
constexpr std::uint32_t lastKey = 255;

KeySet swallowedWith(HotkeyModifiers modifiers, const KeyboardTap::Client& client) {
    KeySet keys;
    for (std::uint32_t code = 1; code <= lastKey; ++code) {
        if (!HeldModifiers::isModifier(code)) {
            const auto verdict = client.verdict({.type = KeyboardTap::Event::Type::keyDown,
                                                 .keyCode = linuxos::EvdevKeyCodes::virtualKeyCode(code),
                                                 .modifiers = modifiers});
            keys.set(code, verdict == KeyboardTap::Verdict::swallow);
        }
    }
    return keys;
}

} // namespace

void SwallowedKeys::ask(const KeyboardTap::Client& client) {
    plain_ = swallowedWith({}, client);
    shifted_ = swallowedWith(HotkeyModifiers::shift, client);
    // With nothing swallowed the client's own window is in front, and the hotkey is what it was before.
    if (!arePlayed() && (plain_ | shifted_).any()) {
        plainHotkey_ = plain_;
        shiftedHotkey_ = shifted_;
    }
}

bool SwallowedKeys::isToldUngrabbed(std::uint32_t evdevCode, HotkeyModifiers modifiers,
                                    KeyboardTap::Verdict verdict) const {
    if (!arePlayed() || verdict == KeyboardTap::Verdict::pass || modifiers.makesShortcut()) {
        return true;
    }
    const auto& hotkey = modifiers.contains(HotkeyModifiers::shift) ? shiftedHotkey_ : plainHotkey_;
    return evdevCode < hotkey.size() && hotkey.test(evdevCode);
}

} // namespace tavro::evdev
