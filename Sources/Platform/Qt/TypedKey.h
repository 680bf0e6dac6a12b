#pragma once

#include "PerformanceModel/Character.h"

#include <optional>

class QKeyEvent;

namespace tavro {

/// What a key event of the windowing system says apart from its position. The same on every platform.
class TypedKey {
public:
    TypedKey() = delete;

    /// Whether the key only modifies or locks others: Shift, AltGr, Caps Lock and the like.
    [[nodiscard]] static bool isModifier(const QKeyEvent& event);

    /// What the key types without Control, Alt and Super, in lower case; nothing for keys that type no
    /// printable character, dead keys among them.
    [[nodiscard]] static std::optional<Character> character(const QKeyEvent& event);
};

} // namespace tavro
