#pragma once

#include "PerformanceModel/PerformanceState.h"

namespace tavro {

/// What changed settings do to what is sounding.
enum class SettingReaction {
    /// They apply from the next press.
    none,
    /// Everything is silenced.
    silence,
    /// Everything is silenced and the engine replaced: held keys mean something else now.
    rebuild,
};

/// The strongest reaction that the differences between two states ask for.
[[nodiscard]] SettingReaction reactionTo(const PerformanceState& previous, const PerformanceState& current);

} // namespace tavro
