#include "Platform/Linux/X11/FocusWatch.h"

#include <QGuiApplication>

#include <utility>

namespace tavro::x11 {

FocusWatch::FocusWatch(std::function<void(bool hasFocus)> handler)
    : handler_(std::move(handler)), delivery_([this] { tellLoss(); }) {
    qGuiApp->installNativeEventFilter(this);
}

bool FocusWatch::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
    if (eventType == "xcb_generic_event_t") {
        const auto type = static_cast<const xcb_generic_event_t*>(message)->response_type & 0x7f;
        const bool isIn = type == XCB_FOCUS_IN;
        if (isIn || type == XCB_FOCUS_OUT) {
            const auto& focus = *static_cast<const xcb_focus_in_event_t*>(message);
            if (isMove(focus)) {
                isLossToBeTold_ = !isIn;
                if (isIn) {
                    handler_(true);
                } else {
                    delivery_.begin();
                }
            }
            return isBorrowing(focus);
        }
    }
    return false;
}

void FocusWatch::tellLoss() {
    // Not when the keyboard has come back meanwhile.
    if (std::exchange(isLossToBeTold_, false)) {
        handler_(false);
    }
}

bool FocusWatch::isBorrowing(const xcb_focus_in_event_t& event) {
    // What moves while a grab lasts is another mode, and a move.
    return event.mode == XCB_NOTIFY_MODE_GRAB || event.mode == XCB_NOTIFY_MODE_UNGRAB;
}

bool FocusWatch::isMove(const xcb_focus_in_event_t& event) {
    return !isBorrowing(event) && event.detail != XCB_NOTIFY_DETAIL_POINTER &&
           event.detail != XCB_NOTIFY_DETAIL_POINTER_ROOT && event.detail != XCB_NOTIFY_DETAIL_INFERIOR;
}

} // namespace tavro::x11
