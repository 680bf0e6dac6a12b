#pragma once

#include "PlatformInterfaces/HotkeyModifiers.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tavro {

/// The hotkey that toggles Global Play, as it is kept between two runs.
struct GlobalPlayHotkeySettings {
    /// The key's text; one lower-case character when it comes from the store.
    std::string key = "^";
    /// The key's position, when it was recorded.
    std::optional<std::int64_t> keyCode;
    HotkeyModifiers modifiers;

    friend bool operator==(const GlobalPlayHotkeySettings&, const GlobalPlayHotkeySettings&) = default;
};

} // namespace tavro
