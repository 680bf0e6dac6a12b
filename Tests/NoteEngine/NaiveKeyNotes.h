#pragma once

#include "KeyboardMapping/KeyboardLayout.h"
#include "PerformanceModel/PerformanceState.h"

#include <cstdint>
#include <vector>

namespace tavro::naive {

/// A second, slow reading of what a key plays. Empty for a key that is not in the layout.
std::vector<int> keyNotes(Character key, const PerformanceState& state, const KeyboardLayout& layout);

/// The tones that a key stacks before they are voiced, by their number.
std::vector<int> stackedNotes(Character key, const PerformanceState& state, const KeyboardLayout& layout,
                              int count);

std::vector<int> trimmed(std::vector<int> notes, std::int64_t keeping);

std::vector<int> limited(const std::vector<int>& notes, const PerformanceState& state);

} // namespace tavro::naive
