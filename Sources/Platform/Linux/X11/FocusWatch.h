#pragma once

#include "Platform/Linux/X11/PendingDelivery.h"

#include <QAbstractNativeEventFilter>

#include <functional>

#include <xcb/xcb.h>

namespace tavro::x11 {

/// Tells when a window of the application gets the keyboard, at once, and when it loses it, as soon as the
/// keys that it got before have been delivered: they are done before any that another road brings from then
/// on. Qt waits with the loss for a tenth of a second, in case another window of the application is about to
/// get it; until then the keys would be nobody's. That another program borrows the keyboard by a grab is kept
/// from Qt, which would take it for a loss. Main thread only.
class FocusWatch final : public QAbstractNativeEventFilter {
public:
    /// Begins at once, and ends with this.
    explicit FocusWatch(std::function<void(bool hasFocus)> handler);

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

    /// Whether the event belongs to a grab's beginning or end: the keyboard is borrowed, or it is back.
    [[nodiscard]] static bool isBorrowing(const xcb_focus_in_event_t& event);

    /// Whether the event means that the keyboard has gone to the window or away from it. A grab only borrows
    /// it, and the pointer's way over a window moves nothing.
    [[nodiscard]] static bool isMove(const xcb_focus_in_event_t& event);

private:
    void tellLoss();

    std::function<void(bool hasFocus)> handler_;
    /// Of what came before a loss that has not been told yet.
    PendingDelivery delivery_;
    bool isLossToBeTold_ = false;
};

} // namespace tavro::x11
