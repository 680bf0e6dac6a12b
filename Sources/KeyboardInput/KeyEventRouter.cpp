#include "KeyboardInput/KeyEventRouter.h"

#include "KeyboardMapping/PhysicalKeyMapper.h"

namespace tavro {

KeyEventRouter::Verdict KeyEventRouter::handle(const KeyEvent& event, const Context& context) {
    doEarlierOnes();
    const auto what = meaning(event, context);
    if (event.type == KeyEvent::Type::keyDown) {
        handleKeyDown(event, what);
    } else {
        handleKeyUp(event, what);
    }
    return what == Meaning::foreign ? Verdict::pass : Verdict::consume;
}

void KeyEventRouter::doEarlierOnes() const {
    if (catchUp) {
        catchUp();
    }
}

KeyEventRouter::Verdict KeyEventRouter::verdict(const KeyEvent& event, const Context& context) const {
    return meaning(event, context) == Meaning::foreign ? Verdict::pass : Verdict::consume;
}

KeyEventRouter::Meaning KeyEventRouter::meaning(const KeyEvent& event, const Context& context) const {
    if (context.isForeignWindow || context.isEditingText) {
        return Meaning::foreign;
    }
    const bool isDown = event.type == KeyEvent::Type::keyDown;
    const bool isRepeat = event.isAutorepeat || !startsPress(event);
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

bool KeyEventRouter::startsPress(const KeyEvent& event) const {
    return keys->startsPress(event.keyCode, event.time);
}

void KeyEventRouter::handleKeyDown(const KeyEvent& event, Meaning what) {
    const auto played = what == Meaning::playing ? playableCharacter(event) : std::nullopt;
    // What is down keeps the character that its release is to end.
    PressedKeys::Pressed pressed;
    if (startsPress(event)) {
        release(keys->finish(event.keyCode));
        pressed = keys->press({.keyCode = event.keyCode,
                               .road = PressedKeys::Road::window,
                               .character = played,
                               .time = event.time});
        release(pressed.ended);
    }
    switch (what) {
    case Meaning::recorded:
        if (onRecordedHotkey) {
            const auto text = hotkeyString(event);
            onRecordedHotkey({.character = ToggleHotkey::characterOf(text ? toUtf8(*text) : ""),
                              .keyCode = event.keyCode,
                              .modifiers = event.modifiers});
        }
        break;
    case Meaning::hotkey:
        if (onHotkey) {
            onHotkey();
        }
        break;
    case Meaning::playing:
        if (played && onKeyDown) {
            onKeyDown(*played);
        }
        break;
    case Meaning::foreign:
    case Meaning::swallowed:
        break;
    }
    if (pressed.isOver) {
        release(played);
    }
}

void KeyEventRouter::handleKeyUp(const KeyEvent& event, Meaning what) {
    const auto released = keys->release(event.keyCode, PressedKeys::Witness::window, event.time);
    if (released.character) {
        release(released.character);
    } else if (!released.isKnown && what == Meaning::playing) {
        release(playableCharacter(event));
    }
}

bool KeyEventRouter::handleDirectly(const KeyEvent& event, const Context& context) {
    // Whatever is more than playing may open things; that is better done where the toolkit expects it.
    const bool plays = PhysicalKeyMapper::character(event.keyCode, layoutKind).has_value() &&
                       !isRecordingHotkey && !isToggleHotkey(event);
    return plays && verdict(event, context) == Verdict::consume && handle(event, context) == Verdict::consume;
}

void KeyEventRouter::setFocused(bool isFocused) {
    if (!isFocused) {
        interruptRecording();
        keys->loseKeyboard();
    }
    if (onFocusChanged) {
        onFocusChanged(isFocused);
    }
}

void KeyEventRouter::interruptRecording() const {
    if (isRecordingHotkey && onRecordingInterrupted) {
        onRecordingInterrupted();
    }
}

void KeyEventRouter::handleReleaseElsewhere(std::int64_t keyCode, std::uint32_t time) {
    doEarlierOnes();
    if (const auto held = keys->find(keyCode); held && held->road == PressedKeys::Road::tap) {
        // The tap sees it too and ends its keys in their order; for the key's next press, the time is known
        // here.
        keys->releaseAhead(keyCode, time);
        return;
    }
    release(keys->release(keyCode, PressedKeys::Witness::windowSystem, time).character);
}

void KeyEventRouter::keepSilent(std::int64_t keyCode, std::uint32_t time) {
    if (!keys->isDown(keyCode)) {
        keys->press(
            {.keyCode = keyCode, .road = PressedKeys::Road::window, .character = std::nullopt, .time = time});
    }
}

void KeyEventRouter::release(std::optional<Character> character) const {
    if (character && onKeyUp) {
        onKeyUp(*character);
    }
}

std::optional<Character> KeyEventRouter::hotkeyString(const KeyEvent& event) const {
    return ToggleHotkey::isCaretKey(event.keyCode) ? std::optional(U'^') : playableCharacter(event);
}

bool KeyEventRouter::isToggleHotkey(const KeyEvent& event) const {
    return hotkey.matches(event.keyCode, event.modifiers, layoutKind);
}

std::optional<Character> KeyEventRouter::playableCharacter(const KeyEvent& event) const {
    if (const auto mapped = PhysicalKeyMapper::character(event.keyCode, layoutKind)) {
        return mapped;
    }
    return event.characterIgnoringModifiers;
}

} // namespace tavro
