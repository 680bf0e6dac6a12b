#pragma once

#include "Platform/Linux/X11/Repeat/KeySet.h"

#include <string>
#include <string_view>

namespace tavro::x11 {

/// What the program tells its guard: lines of key codes, each line replacing the one before it.
class RestoreOrders {
public:
    /// The line for these keys, in decimal and with its end of line.
    [[nodiscard]] static std::string line(const KeySet& keys);

    /// Takes the next part of the text, cut anywhere. What is no number up to 255 is skipped.
    void take(std::string_view text);

    /// The keys of the last line that has come completely; none before the first.
    [[nodiscard]] const KeySet& keys() const { return keys_; }

private:
    std::string pending_;
    KeySet keys_;
};

} // namespace tavro::x11
