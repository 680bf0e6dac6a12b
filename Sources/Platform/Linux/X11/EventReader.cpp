#include "Platform/Linux/X11/EventReader.h"

#include "Platform/Linux/X11/Repeat/Freed.h"

#include <array>

namespace tavro::x11 {

namespace {

/// A request's list of one device and the events wanted of it.
struct EventMask {
    xcb_input_event_mask_t head;
    std::uint32_t events;
};

constexpr auto keyOf(std::uint32_t detail) {
    return static_cast<std::uint8_t>(detail);
}

EventReader::Event readInputEvent(const xcb_generic_event_t& event, const Connection& connection) {
    const auto& general = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    if (general.extension != connection.inputExtension()) {
        return {};
    }
    const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
    switch (general.event_type) {
    case XCB_INPUT_KEY_PRESS: {
        const auto& press = reinterpret_cast<const xcb_input_key_press_event_t&>(event);
        return GrabbedPress{.key = keyOf(press.detail),
                            .modifierBits = press.mods.effective,
                            .isRepeat = (press.flags & XCB_INPUT_KEY_EVENT_FLAGS_KEY_REPEAT) != 0,
                            .protocol = GrabbedPress::Protocol::input2,
                            .time = press.time};
    }
    case XCB_INPUT_RAW_KEY_PRESS:
        return EventReader::RawPress{keyOf(raw.detail)};
    case XCB_INPUT_RAW_KEY_RELEASE:
        return EventReader::RawRelease{keyOf(raw.detail), raw.time};
    case XCB_INPUT_HIERARCHY:
        return EventReader::DeviceChange{};
    default:
        return {};
    }
}

} // namespace

bool EventReader::select(const Connection& connection) {
    const std::array<EventMask, 2> masks{
        EventMask{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
                  XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE},
        EventMask{{XCB_INPUT_DEVICE_ALL, 1}, XCB_INPUT_XI_EVENT_MASK_HIERARCHY}};
    const auto cookie = xcb_input_xi_select_events_checked(connection.get(), connection.root(), masks.size(),
                                                           &masks.front().head);
    return Freed<xcb_generic_error_t>(xcb_request_check(connection.get(), cookie)) == nullptr;
}

EventReader::Event EventReader::read(const xcb_generic_event_t& event, const Connection& connection) {
    // Events that other programs have made up carry a flag in their type and match nothing here.
    switch (event.response_type) {
    case XCB_GE_GENERIC:
        return readInputEvent(event, connection);
    case XCB_KEY_PRESS: {
        const auto& press = reinterpret_cast<const xcb_key_press_event_t&>(event);
        constexpr std::uint32_t modifierMask = 0xFF;
        return GrabbedPress{.key = press.detail,
                            .modifierBits = press.state & modifierMask,
                            .isRepeat = false,
                            .protocol = GrabbedPress::Protocol::core,
                            .time = press.time};
    }
    case XCB_MAPPING_NOTIFY: {
        const auto& notice = reinterpret_cast<const xcb_mapping_notify_event_t&>(event);
        return notice.request == XCB_MAPPING_POINTER ? Event() : Event(MappingChange{});
    }
    default:
        return {};
    }
}

} // namespace tavro::x11
