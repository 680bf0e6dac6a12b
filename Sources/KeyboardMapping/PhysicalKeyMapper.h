#pragma once

#include "PerformanceModel/Character.h"
#include "PerformanceModel/KeyboardLayoutKind.h"

#include <cstdint>
#include <optional>

namespace tavro {

/// Physical key positions to playable characters. Positions are named by the Mac's virtual key codes on
/// every platform; adapters translate their own codes into these.
class PhysicalKeyMapper {
public:
    PhysicalKeyMapper() = delete;

    /// The character printed at this position on a keyboard of this layout, whatever input language is
    /// active; nothing for the keys that do not play.
    [[nodiscard]] static std::optional<Character> character(std::int64_t keyCode, KeyboardLayoutKind layout);
};

} // namespace tavro
