#pragma once

#include "Platform/Linux/X11/Repeat/KeySet.h"

#include <optional>

#include <xcb/xcb.h>

namespace tavro::x11 {

/// The server's flags that tell which keys repeat while they are held.
class KeyRepeat {
public:
    KeyRepeat() = delete;

    /// The keys whose flag is set. Takes a round trip; nothing when the server does not answer.
    [[nodiscard]] static std::optional<KeySet> read(xcb_connection_t* connection);

    /// Sets or clears the flags of these keys and waits until that is done. False when the server is gone.
    static bool write(xcb_connection_t* connection, const KeySet& keys, bool repeats);
};

} // namespace tavro::x11
