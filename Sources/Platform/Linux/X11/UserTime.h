#pragma once

#include <xcb/xcb.h>

namespace tavro::x11 {

/// The time of the user's last action in a window, as the window manager reads it to tell whether a new
/// window may come to the front. Qt keeps it up to date with the events that it sees; this does for the
/// others.
class UserTime {
public:
    /// The connection that Qt has, which outlives this.
    UserTime(xcb_connection_t* connection, xcb_window_t window);

    /// Tells the window manager. Returns at once; Qt flushes the connection.
    void tell(xcb_timestamp_t time) const;

    /// A property of some window has changed.
    void propertyChanged(const xcb_property_notify_event_t& change);

private:
    [[nodiscard]] xcb_window_t carryingWindow() const;

    xcb_connection_t* connection_;
    xcb_window_t window_;
    xcb_atom_t time_;
    xcb_atom_t timeWindow_;
    /// With most window managers not the window itself, so that not everyone who watches that is woken.
    xcb_window_t carrier_;
};

} // namespace tavro::x11
