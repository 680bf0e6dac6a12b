#pragma once

#include <bitset>

#include <linux/input-event-codes.h>

namespace tavro::evdev {

/// A set of keys by the kernel's codes; buttons count among them.
using KeySet = std::bitset<KEY_CNT>;

} // namespace tavro::evdev
