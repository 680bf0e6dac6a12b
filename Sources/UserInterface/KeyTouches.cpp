#include "UserInterface/KeyTouches.h"

#include <algorithm>
#include <utility>

namespace tavro {

KeyTouches::KeyTouches(Handler onKeyDown, Handler onKeyUp)
    : onKeyDown_(std::move(onKeyDown)), onKeyUp_(std::move(onKeyUp)) {}

void KeyTouches::moveTo(int point, Character key) {
    const auto held = keys_.find(point);
    if (key == U'\0' || (held != keys_.end() && held->second == key)) {
        return;
    }
    end(point);
    const bool sounds = isHeld(key);
    keys_.emplace(point, key);
    if (!sounds) {
        onKeyDown_(key);
    }
}

void KeyTouches::end(int point) {
    const auto held = keys_.find(point);
    if (held == keys_.end()) {
        return;
    }
    const auto key = held->second;
    keys_.erase(held);
    if (!isHeld(key)) {
        onKeyUp_(key);
    }
}

bool KeyTouches::isHeld(Character key) const {
    return std::ranges::any_of(keys_, [key](const auto& held) { return held.second == key; });
}

} // namespace tavro
