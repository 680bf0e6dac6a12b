#include "KeyboardInput/GlobalKeyRules.h"

#include "KeyboardMapping/PhysicalKeyMapper.h"

namespace tavro {

using Type = KeyboardTap::Event::Type;
using Verdict = KeyboardTap::Verdict;

void GlobalKeyRules::setEnabled(bool isEnabled) {
    isEnabled_ = isEnabled;
    forgetPressedKeys();
}

GlobalKeyRules::Decision GlobalKeyRules::decide(const KeyboardTap::Event& event) {
    switch (event.type) {
    case Type::disabledByTimeout:
    case Type::disabledByUserInput:
        return {.verdict = Verdict::pass, .action = Action::enableTap};
    case Type::keyDown:
        return decideKeyDown(event);
    case Type::keyUp:
        return decideKeyUp(event);
    case Type::other:
        break;
    }
    return {};
}

KeyboardTap::Verdict GlobalKeyRules::verdict(const KeyboardTap::Event& event) const {
    const bool isKey = event.type == Type::keyDown || event.type == Type::keyUp;
    if (!isKey || isApplicationActive || isPaused) {
        return Verdict::pass;
    }
    const bool isHotkey = event.type == Type::keyDown && matchesToggleHotkey(event.keyCode, event.modifiers);
    return isHotkey || playedCharacter(event) ? Verdict::swallow : Verdict::pass;
}

GlobalKeyRules::Decision GlobalKeyRules::decideKeyDown(const KeyboardTap::Event& event) {
    Decision decision{.verdict = verdict(event)};
    if (decision.verdict == Verdict::pass) {
        return decision;
    }
    if (matchesToggleHotkey(event.keyCode, event.modifiers)) {
        if (!event.isAutorepeat) {
            setEnabled(!isEnabled_);
            decision.action = Action::toggle;
        }
        return decision;
    }
    // A repeat of a key that went down before it was ours starts nothing either.
    if (event.isAutorepeat) {
        return decision;
    }
    if (isHeld(event.keyCode)) {
        if (!keys->releaseByNextPress(event.keyCode, event.time)) {
            return decision;
        }
        decision.isOfWindow = true;
    }
    decision.action = Action::keyDown;
    decision.character = playedCharacter(event).value_or(noKey);
    keys->press({.keyCode = event.keyCode,
                 .road = PressedKeys::Road::tap,
                 .character = decision.character,
                 .time = event.time});
    return decision;
}

GlobalKeyRules::Decision GlobalKeyRules::decideKeyUp(const KeyboardTap::Event& event) {
    Decision decision{.verdict = verdict(event)};
    // What was played is released whatever holds by now: with a modifier held or the program in front the
    // release belongs to others, and yet the note must end, on whichever road the key came in.
    if (const auto held = keys->find(event.keyCode)) {
        if (held->road == PressedKeys::Road::tap) {
            keys->release(event.keyCode, PressedKeys::Witness::tap, event.time);
        } else if (keys->releaseLater(event.keyCode, event.time)) {
            decision.isOfWindow = true;
        } else {
            return decision;
        }
        decision.action = Action::keyUp;
        decision.character = held->character.value_or(noKey);
        return decision;
    }
    // Its press may be on its way to a window, which will then not be told.
    if (isApplicationActive || decision.verdict == Verdict::swallow) {
        keys->releaseAhead(event.keyCode, event.time);
    }
    if (decision.verdict == Verdict::swallow) {
        decision.action = Action::keyUp;
        decision.character = playedCharacter(event).value_or(noKey);
    }
    return decision;
}

bool GlobalKeyRules::isHeld(std::int64_t keyCode) const {
    const auto held = keys->find(keyCode);
    // A window only knows a silent key to be down. When it learns of that from the system, it may be ahead of
    // the tap, which then tells the press itself.
    return held && (held->road == PressedKeys::Road::tap || held->character);
}

std::optional<Character> GlobalKeyRules::playedCharacter(const KeyboardTap::Event& event) const {
    if (!isEnabled_ || event.modifiers.makesShortcut()) {
        return std::nullopt;
    }
    return PhysicalKeyMapper::character(event.keyCode, layoutKind);
}

bool GlobalKeyRules::matchesToggleHotkey(std::int64_t keyCode, HotkeyModifiers modifiers) const {
    return hotkey.matches(keyCode, modifiers, layoutKind);
}

} // namespace tavro
