#include "PerformanceModel/KeyboardLayoutKind.h"

#include <algorithm>

namespace tavro {

std::string_view rawValue(KeyboardLayoutKind kind) {
    return kind == KeyboardLayoutKind::qwertz ? "QWERTZ" : "QWERTY";
}

std::optional<KeyboardLayoutKind> keyboardLayoutKindFromRawValue(std::string_view text) {
    const auto found = std::ranges::find(allKeyboardLayoutKinds, text,
                                         [](KeyboardLayoutKind kind) { return rawValue(kind); });
    return found == allKeyboardLayoutKinds.end() ? std::nullopt : std::optional(*found);
}

std::string_view label(KeyboardLayoutKind kind) {
    return kind == KeyboardLayoutKind::qwertz ? "QWERTZ (German)" : "QWERTY";
}

} // namespace tavro
