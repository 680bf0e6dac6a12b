#include "Seeds.h"

#include <charconv>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tavro::proof {

std::uint32_t seedOr(std::uint32_t fixed) {
    const auto* const value = std::getenv("TAVRO_RANDOM_SEED");
    const std::string_view text = value == nullptr ? "" : value;
    if (text.empty()) {
        return fixed;
    }
    std::uint32_t seed = 0;
    const auto* const end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, seed);
    if (parsed.ec != std::errc() || parsed.ptr != end) {
        throw std::runtime_error("TAVRO_RANDOM_SEED is no number below 2^32: " + std::string(text));
    }
    return seed;
}

} // namespace tavro::proof
