#pragma once

#include <bitset>

namespace tavro::x11 {

/// A set of X key codes.
using KeySet = std::bitset<256>;

} // namespace tavro::x11
