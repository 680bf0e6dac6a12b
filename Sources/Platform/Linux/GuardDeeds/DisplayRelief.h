#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <xcb/xcb.h>

namespace tavro::guard {

/// Gives the keyboard of an X display back. Without a display nothing happens.
class DisplayRelief {
public:
    /// Connects at once: later the way to the display may no longer be known. An empty name means none.
    explicit DisplayRelief(const std::string& display);

    /// Ends the connection that owns the resource, and with it every grab of that one; 0 is no resource.
    void endConnectionOf(std::uint32_t resource) const;

    /// Lets these key codes repeat again.
    void restoreRepeats(const std::vector<unsigned>& keys) const;

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
};

} // namespace tavro::guard
