#include "KeyboardInput/KeyEventRouter.h"

#include "KeyboardInput/ToggleHotkey.h"
#include "KeyboardMapping/PhysicalKeyMapper.h"

namespace tavro {

KeyEventRouter::Verdict KeyEventRouter::handle(const KeyEvent& event, const Context& context) {
    const auto what = meaning(event, context);
    if (event.type == KeyEvent::Type::keyDown) {
        keysDown_.insert(event.keyCode);
        handleKeyDown(event, what);
    } else {
        keysDown_.erase(event.keyCode);
        handleKeyUp(event, what);
    }
    return what == Meaning::foreign ? Verdict::pass : Verdict::consume;
}

KeyEventRouter::Verdict KeyEventRouter::verdict(const KeyEvent& event, const Context& context) const {
    return meaning(event, context) == Meaning::foreign ? Verdict::pass : Verdict::consume;
}

KeyEventRouter::Meaning KeyEventRouter::meaning(const KeyEvent& event, const Context& context) const {
    if (context.isForeignWindow || context.isEditingText) {
        return Meaning::foreign;
    }
    const bool isDown = event.type == KeyEvent::Type::keyDown;
    const bool isRepeat = event.isAutorepeat || keysDown_.contains(event.keyCode);
    if (isDown && !isRepeat) {
        if (isRecordingHotkey) {
            return Meaning::recorded;
        }
        if (isToggleHotkey(event)) {
            return Meaning::hotkey;
        }
    }
    if (event.modifiers.makesShortcut()) {
        return Meaning::foreign;
    }
    return isDown && isRepeat ? Meaning::swallowed : Meaning::playing;
}

void KeyEventRouter::handleKeyDown(const KeyEvent& event, Meaning what) {
    switch (what) {
    case Meaning::recorded:
        if (const auto text = hotkeyString(event); text && onRecordedHotkey) {
            onRecordedHotkey(toUtf8(*text), event.keyCode, event.modifiers);
        }
        break;
    case Meaning::hotkey:
        if (onHotkey) {
            onHotkey();
        }
        break;
    case Meaning::playing:
        if (const auto character = playableCharacter(event)) {
            heldKeys_.insert_or_assign(event.keyCode, *character);
            if (onKeyDown) {
                onKeyDown(*character);
            }
        }
        break;
    case Meaning::foreign:
    case Meaning::swallowed:
        break;
    }
}

void KeyEventRouter::handleKeyUp(const KeyEvent& event, Meaning what) {
    const auto release = [this](std::optional<Character> character) {
        if (character && onKeyUp) {
            onKeyUp(*character);
        }
    };
    if (const auto held = heldKeys_.extract(event.keyCode)) {
        release(held.mapped());
    } else if (what == Meaning::playing) {
        release(playableCharacter(event));
    }
}

std::optional<Character> KeyEventRouter::hotkeyString(const KeyEvent& event) const {
    return ToggleHotkey::isCaretKey(event.keyCode) ? std::optional(U'^') : playableCharacter(event);
}

bool KeyEventRouter::isToggleHotkey(const KeyEvent& event) const {
    return ToggleHotkey{ToggleHotkey::characterOf(hotkey), hotkeyKeyCode, hotkeyModifiers}.matches(
        event.keyCode, event.modifiers, layoutKind);
}

std::optional<Character> KeyEventRouter::playableCharacter(const KeyEvent& event) const {
    if (const auto mapped = PhysicalKeyMapper::character(event.keyCode, layoutKind)) {
        return mapped;
    }
    return event.characterIgnoringModifiers;
}

} // namespace tavro
