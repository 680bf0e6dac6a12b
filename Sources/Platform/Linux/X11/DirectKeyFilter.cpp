#include "Platform/Linux/X11/DirectKeyFilter.h"

#include "Platform/Linux/KeyCodes/EvdevKeyCodes.h"

#include <QAccessible>
#include <QGuiApplication>

#include <utility>

namespace tavro::x11 {

namespace {

using linuxos::EvdevKeyCodes;

// Where the keymaps of all X servers have it.
constexpr unsigned numLockMask = XCB_MOD_MASK_2;
constexpr unsigned anyButton = 0x1f00;
constexpr unsigned anyLayoutGroup = 0x6000;
constexpr unsigned plainState =
    XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_LOCK | numLockMask | anyButton | anyLayoutGroup;

std::optional<UserTime> userTimeOf(const QWindow& window) {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr || x11->connection() == nullptr) {
        return std::nullopt;
    }
    return UserTime(x11->connection(), static_cast<xcb_window_t>(window.winId()));
}

KeyEvent keyEvent(const xcb_key_press_event_t& key, bool isPress) {
    const bool hasShift = (key.state & XCB_MOD_MASK_SHIFT) != 0;
    return {
        .type = isPress ? KeyEvent::Type::keyDown : KeyEvent::Type::keyUp,
        .keyCode = EvdevKeyCodes::virtualKeyCode(key.detail - EvdevKeyCodes::scanCodeOffset),
        .characterIgnoringModifiers = std::nullopt,
        .modifiers = hasShift ? HotkeyModifiers::shift : HotkeyModifiers(),
        .isAutorepeat = false,
        .time = key.time,
    };
}

bool changesNothing(const xcb_generic_event_t& event) {
    return event.response_type == XCB_EXPOSE || event.response_type == XCB_GRAPHICS_EXPOSURE ||
           event.response_type == XCB_NO_EXPOSURE;
}

} // namespace

DirectKeyFilter::DirectKeyFilter(QWindow& window, Handler handler)
    : window_(&window), handler_(std::move(handler)), userTime_(userTimeOf(window)) {
    qGuiApp->installNativeEventFilter(this);
}

bool DirectKeyFilter::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
    if (eventType != "xcb_generic_event_t") {
        return false;
    }
    const auto& event = *static_cast<const xcb_generic_event_t*>(message);
    // Compared whole: one bit of it marks events that another program has sent.
    const bool isPress = event.response_type == XCB_KEY_PRESS;
    if (isPress || event.response_type == XCB_KEY_RELEASE) {
        if (takes(*static_cast<const xcb_key_press_event_t*>(message), isPress)) {
            return true;
        }
    } else if (event.response_type == XCB_PROPERTY_NOTIFY && userTime_) {
        userTime_->propertyChanged(*static_cast<const xcb_property_notify_event_t*>(message));
    }
    if (!changesNothing(event)) {
        delivery_.begin();
    }
    return false;
}

bool DirectKeyFilter::takes(const xcb_key_press_event_t& key, bool isPress) {
    if (!ordinaryKeys_[key.detail] && isPlain(key) && handler_(keyEvent(key, isPress))) {
        if (isPress && userTime_) {
            userTime_->tell(key.time);
        }
        return true;
    }
    ordinaryKeys_[key.detail] = isPress;
    return false;
}

bool DirectKeyFilter::isPlain(const xcb_key_press_event_t& key) const {
    if (delivery_.isUnderWay() || key.detail < EvdevKeyCodes::scanCodeOffset ||
        (key.state & ~plainState) != 0) {
        return false;
    }
    if (window_ == nullptr || QGuiApplication::focusWindow() != window_ || key.event != window_->winId() ||
        QGuiApplication::modalWindow() != nullptr) {
        return false;
    }
    // Programs that assist the user want to see every key, and learn of them from Qt.
    return !QAccessible::isActive();
}

} // namespace tavro::x11
