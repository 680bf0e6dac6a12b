#pragma once

#include "Platform/Linux/X11/PendingDelivery.h"
#include "Platform/Linux/X11/UserTime.h"
#include "PlatformInterfaces/KeyEvent.h"

#include <QAbstractNativeEventFilter>
#include <QPointer>
#include <QWindow>

#include <bitset>
#include <functional>
#include <optional>

#include <xcb/xcb.h>

namespace tavro::x11 {

/// Offers the plain keys of a window to a handler as soon as they are read from the X server, before the
/// input method, the shortcuts and the event queue of Qt, which take longer than everything else on a note's
/// way. Plain are keys without Control, Alt and the like, while nothing else is being delivered that could
/// change what they mean. All others, and those that the handler declines, go the ordinary way. Main thread
/// only.
class DirectKeyFilter final : public QAbstractNativeEventFilter {
public:
    /// True when it took the event, which Qt then never sees. Events carry the physical position and no typed
    /// character; repeats by the keyboard are presses like others.
    using Handler = std::function<bool(const KeyEvent&)>;

    /// Begins at once, and ends with this or with the window. The window must have been shown.
    DirectKeyFilter(QWindow& window, Handler handler);

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

private:
    [[nodiscard]] bool takes(const xcb_key_press_event_t& key, bool isPress);
    [[nodiscard]] bool isPlain(const xcb_key_press_event_t& key) const;

    QPointer<QWindow> window_;
    Handler handler_;
    PendingDelivery delivery_;
    /// Absent when the application is not connected to an X server.
    std::optional<UserTime> userTime_;
    /// The keys, by X key code, whose press went the ordinary way: what follows it must not overtake it.
    std::bitset<256> ordinaryKeys_;
};

} // namespace tavro::x11
