#include "Platform/Linux/X11/UserTime.h"

#include "Platform/Linux/X11/Property.h"

namespace tavro::x11 {

UserTime::UserTime(xcb_connection_t* connection, xcb_window_t window)
    : connection_(connection), window_(window), time_(Property::atom(connection, "_NET_WM_USER_TIME")),
      timeWindow_(Property::atom(connection, "_NET_WM_USER_TIME_WINDOW")), carrier_(carryingWindow()) {}

void UserTime::tell(xcb_timestamp_t time) const {
    if (time_ != XCB_ATOM_NONE) {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, carrier_, time_, XCB_ATOM_CARDINAL, 32, 1,
                            &time);
    }
}

void UserTime::propertyChanged(const xcb_property_notify_event_t& change) {
    if (change.window == window_ && change.atom == timeWindow_) {
        carrier_ = carryingWindow();
    }
}

xcb_window_t UserTime::carryingWindow() const {
    const auto windows = Property::numbers(connection_, window_, timeWindow_, XCB_ATOM_WINDOW);
    return windows.size() == 1 ? windows.front() : window_;
}

} // namespace tavro::x11
