#include "Platform/Linux/X11/HeldKeyWatch.h"

#include "Platform/Linux/KeyCodes/EvdevKeyCodes.h"
#include "Platform/Linux/X11/Repeat/Freed.h"

#include <QGuiApplication>
#include <QWindow>

namespace tavro::x11 {

namespace {

using linuxos::EvdevKeyCodes;

std::int64_t virtualKeyCode(std::size_t key) {
    return EvdevKeyCodes::virtualKeyCode(static_cast<std::uint32_t>(key) - EvdevKeyCodes::scanCodeOffset);
}

/// 0 without the extension, or with one that keeps raw events from all but the grabbing program.
std::uint8_t inputExtensionOf(xcb_connection_t* connection) {
    const auto* const extension = xcb_get_extension_data(connection, &xcb_input_id);
    if (extension == nullptr || extension->present == 0) {
        return 0;
    }
    // Qt has said the same before, and the first answer stands.
    const Freed<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(connection, xcb_input_xi_query_version(connection, 2, 2), nullptr));
    const bool isNewEnough = version && (version->major_version > 2 ||
                                         (version->major_version == 2 && version->minor_version >= 1));
    return isNewEnough ? extension->major_opcode : 0;
}

bool selectReleases(xcb_connection_t* connection) {
    struct {
        xcb_input_event_mask_t head{XCB_INPUT_DEVICE_ALL_MASTER, 1};
        std::uint32_t events = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
    } mask;

    // Raw events belong to no screen; by one root they come once.
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const auto cookie = xcb_input_xi_select_events_checked(connection, root, 1, &mask.head);
    return Freed<xcb_generic_error_t>(xcb_request_check(connection, cookie)) == nullptr;
}

/// Asks for the keys that are down whenever the keyboard comes to the window.
void selectKeymap(xcb_connection_t* connection, xcb_window_t window) {
    const Freed<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(connection, xcb_get_window_attributes(connection, window), nullptr));
    if (attributes) {
        const std::uint32_t events = attributes->your_event_mask | XCB_EVENT_MASK_KEYMAP_STATE;
        xcb_change_window_attributes(connection, window, XCB_CW_EVENT_MASK, &events);
    }
}

} // namespace

std::unique_ptr<HeldKeyWatch> HeldKeyWatch::start(QWindow& window, HeldKeyNotices& notices) {
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    auto* const connection = x11 != nullptr ? x11->connection() : nullptr;
    const auto extension =
        connection != nullptr ? inputExtensionOf(connection) : static_cast<std::uint8_t>(0);
    if (extension == 0 || !selectReleases(connection)) {
        return nullptr;
    }
    selectKeymap(connection, static_cast<xcb_window_t>(window.winId()));
    auto watch = std::make_unique<HeldKeyWatch>(extension, notices);
    qGuiApp->installNativeEventFilter(watch.get());
    return watch;
}

HeldKeyWatch::HeldKeyWatch(std::uint8_t inputExtension, HeldKeyNotices& notices)
    : inputExtension_(inputExtension), notices_(notices) {}

bool HeldKeyWatch::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
    if (eventType != "xcb_generic_event_t") {
        return false;
    }
    // Compared whole: one bit of it marks events that another program has sent.
    switch (static_cast<const xcb_generic_event_t*>(message)->response_type) {
    case XCB_KEY_PRESS:
        see(*static_cast<const xcb_key_press_event_t*>(message));
        return false;
    case XCB_KEY_RELEASE:
        // Behind its raw notice, unless this program itself has grabbed the keyboard.
        watched_.reset(static_cast<const xcb_key_release_event_t*>(message)->detail);
        return false;
    case XCB_KEYMAP_NOTIFY:
        compare(*static_cast<const xcb_keymap_notify_event_t*>(message));
        return false;
    case XCB_GE_GENERIC:
        return takes(*static_cast<const xcb_ge_generic_event_t*>(message));
    default:
        return false;
    }
}

void HeldKeyWatch::see(const xcb_key_press_event_t& press) {
    watched_.set(press.detail);
    time_ = press.time;
}

bool HeldKeyWatch::takes(const xcb_ge_generic_event_t& event) {
    if (event.extension != inputExtension_ || event.event_type != XCB_INPUT_RAW_KEY_RELEASE) {
        return false;
    }
    const auto& raw = reinterpret_cast<const xcb_input_raw_key_release_event_t&>(event);
    // A press that goes to the window may come before the tap has told the release.
    if (raw.detail < watched_.size() &&
        (watched_.test(raw.detail) || notices_.isAwaited(virtualKeyCode(raw.detail)))) {
        time_ = raw.time;
        release(static_cast<std::uint8_t>(raw.detail), raw.time);
    }
    return true;
}

void HeldKeyWatch::compare(const xcb_keymap_notify_event_t& keymap) {
    // Its first eight keys are none, and left out.
    for (std::size_t key = EvdevKeyCodes::scanCodeOffset; key < watched_.size(); ++key) {
        const bool isDown = ((keymap.keys[key / 8 - 1] >> (key % 8)) & 1) != 0;
        if (isDown && !watched_.test(key)) {
            watched_.set(key);
            notices_.keepSilent(virtualKeyCode(key), time_ != 0 ? time_ + 1 : 0);
        } else if (!isDown && watched_.test(key)) {
            release(static_cast<std::uint8_t>(key), time_);
        }
    }
}

void HeldKeyWatch::release(std::uint8_t key, xcb_timestamp_t time) {
    watched_.reset(key);
    notices_.handleReleaseElsewhere(virtualKeyCode(key), time);
}

} // namespace tavro::x11
