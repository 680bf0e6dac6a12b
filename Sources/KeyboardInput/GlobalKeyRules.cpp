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
    if (!isKey || isApplicationActive) {
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
    if (event.isAutorepeat || pressedKeys_.contains(event.keyCode)) {
        return decision;
    }
    decision.action = Action::keyDown;
    decision.character = playedCharacter(event).value_or(noKey);
    pressedKeys_.emplace(event.keyCode, decision.character);
    return decision;
}

GlobalKeyRules::Decision GlobalKeyRules::decideKeyUp(const KeyboardTap::Event& event) {
    Decision decision{.verdict = verdict(event)};
    // What was played is released whatever holds by now: with a modifier held or the program in front the
    // release belongs to others, and yet the note must end.
    if (const auto pressed = pressedKeys_.extract(event.keyCode)) {
        decision.action = Action::keyUp;
        decision.character = pressed.mapped();
    } else if (decision.verdict == Verdict::swallow) {
        decision.action = Action::keyUp;
        decision.character = playedCharacter(event).value_or(noKey);
    }
    return decision;
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
