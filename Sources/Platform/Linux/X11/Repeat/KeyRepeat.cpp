#include "Platform/Linux/X11/Repeat/KeyRepeat.h"

#include "Platform/Linux/X11/Repeat/Freed.h"

#include <array>
#include <cstdint>

namespace tavro::x11 {

std::optional<KeySet> KeyRepeat::read(xcb_connection_t* connection) {
    const Freed<xcb_get_keyboard_control_reply_t> control(
        xcb_get_keyboard_control_reply(connection, xcb_get_keyboard_control(connection), nullptr));
    if (!control) {
        return std::nullopt;
    }
    KeySet keys;
    for (std::size_t key = 0; key < keys.size(); ++key) {
        keys.set(key, ((control->auto_repeats[key / 8] >> (key % 8)) & 1) != 0);
    }
    return keys;
}

bool KeyRepeat::write(xcb_connection_t* connection, const KeySet& keys, bool repeats) {
    if (keys.none()) {
        return true;
    }
    const std::uint32_t mode = repeats ? XCB_AUTO_REPEAT_MODE_ON : XCB_AUTO_REPEAT_MODE_OFF;
    for (std::size_t key = 0; key < keys.size(); ++key) {
        if (keys.test(key)) {
            const std::array<std::uint32_t, 2> values{static_cast<std::uint32_t>(key), mode};
            xcb_change_keyboard_control(connection, XCB_KB_KEY | XCB_KB_AUTO_REPEAT_MODE, values.data());
        }
    }
    // Any question: its answer comes after everything before it was done.
    const Freed<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    return answer != nullptr;
}

} // namespace tavro::x11
