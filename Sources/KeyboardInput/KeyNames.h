#pragma once

#include "PerformanceModel/KeyboardLayoutKind.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tavro {

/// What keys are called for the user. For display alone: nothing is stored or compared by these names.
class KeyNames {
public:
    KeyNames() = delete;

    /// The name of a key by its virtual key code: what the layout prints on it, or a word for a key that
    /// prints nothing ("Space", "F5", "Keypad 5"). Nothing for a key that is known by neither.
    [[nodiscard]] static std::optional<std::string> name(std::int64_t keyCode, KeyboardLayoutKind layoutKind);

    /// What the layout prints on the key left of 1.
    [[nodiscard]] static std::string nameLeftOfOne(KeyboardLayoutKind layoutKind);
};

} // namespace tavro
