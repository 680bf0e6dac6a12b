#include "Platform/Linux/X11/UserTime.h"

#include "Platform/Linux/X11/Freed.h"

#include <cstdint>
#include <string_view>

namespace tavro::x11 {

namespace {

xcb_atom_t atomNamed(xcb_connection_t* connection, std::string_view name) {
    const auto question =
        xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const Freed<xcb_intern_atom_reply_t> answer(xcb_intern_atom_reply(connection, question, nullptr));
    return answer != nullptr ? answer->atom : xcb_atom_t{XCB_ATOM_NONE};
}

} // namespace

UserTime::UserTime(xcb_connection_t* connection, xcb_window_t window)
    : connection_(connection), window_(window), time_(atomNamed(connection, "_NET_WM_USER_TIME")),
      timeWindow_(atomNamed(connection, "_NET_WM_USER_TIME_WINDOW")), carrier_(carryingWindow()) {}

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
    const auto question = xcb_get_property(connection_, 0, window_, timeWindow_, XCB_ATOM_WINDOW, 0, 1);
    const Freed<xcb_get_property_reply_t> answer(xcb_get_property_reply(connection_, question, nullptr));
    if (answer == nullptr || xcb_get_property_value_length(answer.get()) != sizeof(xcb_window_t)) {
        return window_;
    }
    return *static_cast<const xcb_window_t*>(xcb_get_property_value(answer.get()));
}

} // namespace tavro::x11
