#pragma once

#include <cstdint>
#include <functional>

namespace tavro {

/// Gives a uniformly distributed number of 32 bits at each call.
using RandomSource = std::function<std::uint32_t()>;

/// A source seeded by the system.
[[nodiscard]] RandomSource systemRandomSource();

} // namespace tavro
