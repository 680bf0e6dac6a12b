#include "KeyboardInput/ModifierDoubleClickRules.h"

#include <cmath>

namespace tavro {

bool ModifierDoubleClickRules::isDoubleClick(const Press& press) {
    clickCount_ = continuesSeries(press) ? clickCount_ + 1 : 1;
    last_ = press;
    return clickCount_ == 2 && press.isInside && (press.modifiers & requiredModifiers) == requiredModifiers;
}

bool ModifierDoubleClickRules::continuesSeries(const Press& press) const {
    return clickCount_ > 0 && press.milliseconds - last_.milliseconds < nearness_.milliseconds &&
           std::abs(press.x - last_.x) <= nearness_.distance &&
           std::abs(press.y - last_.y) <= nearness_.distance;
}

} // namespace tavro
