#pragma once

#include "Platform/Linux/Guard/GuardProcess.h"
#include "Platform/Linux/X11/Repeat/KeySet.h"

#include <xcb/xcb.h>

namespace tavro::x11 {

/// Keeps keys from repeating while they are played. A repeat of a grabbed key would not be heard, but once a
/// further modifier is pressed, the key's repeats are no longer grabbed and reach the front application. One
/// thread.
class AutorepeatSettings {
public:
    /// Both outlive this.
    AutorepeatSettings(xcb_connection_t* connection, guard::GuardProcess& guard)
        : connection_(connection), guard_(guard) {}

    /// Exactly these keys do not repeat, apart from those that the user keeps from it. Keys that are no
    /// longer among them are as they were found. Takes a round trip when something changes.
    void keepOff(const KeySet& keys);

    /// Sees to it again after something else may have changed it: a keyboard that was plugged in, or a new
    /// keymap, with which the server lets all keys repeat. What repeats by then will do so afterwards. Takes
    /// a round trip while there are such keys.
    void reapply();

private:
    void entrustChanged() const;

    xcb_connection_t* connection_;
    guard::GuardProcess& guard_;
    /// What was wanted last.
    KeySet wanted_;
    /// Those of them that did repeat.
    KeySet changed_;
};

} // namespace tavro::x11
