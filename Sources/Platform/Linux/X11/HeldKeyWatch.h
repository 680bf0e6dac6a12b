#pragma once

#include "Platform/Linux/X11/Repeat/KeySet.h"
#include "PlatformInterfaces/HeldKeyNotices.h"

#include <QAbstractNativeEventFilter>

#include <cstdint>
#include <memory>

#include <xcb/xcb.h>
#include <xcb/xinput.h>

class QWindow;

namespace tavro::x11 {

/// Watches the keys that went down in windows of the program until they go up, whoever has the keyboard by
/// then: a key that is let go under another program's grab, or in another program's window, is told to the
/// program by no ordinary event. On the application's own connection, so that the notices stand in one order
/// with the windows' keys. Of keys that were pressed elsewhere it sees nothing but that they go up, and drops
/// that at once unless the program waits for it; of their presses it is not told at all. Main thread only.
class HeldKeyWatch final : public QAbstractNativeEventFilter {
public:
    /// Begins at once, and ends with the result or with the window, which must have been shown. To be made
    /// behind every filter that keeps keys from the others. The notices must outlive the result. Null when
    /// the server has no XInput 2.1.
    [[nodiscard]] static std::unique_ptr<HeldKeyWatch> start(QWindow& window, HeldKeyNotices& notices);

    /// For events of this extension number that come from elsewhere.
    HeldKeyWatch(std::uint8_t inputExtension, HeldKeyNotices& notices);

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

private:
    void see(const xcb_key_press_event_t& press);
    [[nodiscard]] bool takes(const xcb_ge_generic_event_t& event);
    void compare(const xcb_keymap_notify_event_t& keymap);
    void release(std::uint8_t key, xcb_timestamp_t time);

    std::uint8_t inputExtension_;
    HeldKeyNotices& notices_;
    /// The keys whose release is waited for.
    KeySet watched_;
    /// Of the latest event that tells one.
    xcb_timestamp_t time_ = 0;
};

} // namespace tavro::x11
