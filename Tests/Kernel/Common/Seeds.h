#pragma once

#include <cstdint>

namespace tavro::proof {

/// The seed of a check that chooses at random: the number in the environment variable TAVRO_RANDOM_SEED, or
/// `fixed` when there is none. Throws std::runtime_error when what the variable holds is no number of 32
/// bits.
[[nodiscard]] std::uint32_t seedOr(std::uint32_t fixed);

} // namespace tavro::proof
