#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <xcb/xcb.h>
#include <xcb/xinput.h>

namespace tavro::x11 {

/// A connection of its own to an X server that knows XInput 2.2, and the keyboard behind which all keyboards
/// of the user stand. What other connections grab, or wait for, does not concern it.
class Connection {
public:
    /// An empty display means the one of the environment. Null when there is no such server, or an old one.
    [[nodiscard]] static std::unique_ptr<Connection> open(const std::string& display);

    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    [[nodiscard]] xcb_connection_t* get() const { return connection_.get(); }

    /// Something that belongs to this connection, by which another one can end it.
    [[nodiscard]] std::uint32_t mark() const { return mark_; }

    /// The root window of the display's default screen.
    [[nodiscard]] xcb_window_t root() const { return root_; }

    /// Those of all screens.
    [[nodiscard]] const std::vector<xcb_window_t>& roots() const { return roots_; }

    /// The master keyboard. Grabs on "all masters" would ignore the synchronous mode.
    [[nodiscard]] xcb_input_device_id_t keyboard() const { return keyboard_; }

    /// What marks the events of XInput.
    [[nodiscard]] std::uint8_t inputExtension() const { return inputExtension_; }

    [[nodiscard]] bool isLost() const { return xcb_connection_has_error(get()) != 0; }

    /// Waits until the server has done everything that was asked for.
    void synchronize() const;

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    explicit Connection(xcb_connection_t* connection) : connection_(connection) {}

    void makeMark();
    [[nodiscard]] bool findRoots(int screenNumber);
    [[nodiscard]] bool findInputExtension();
    [[nodiscard]] bool findKeyboard();

    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    xcb_window_t mark_ = XCB_NONE;
    xcb_window_t root_ = XCB_NONE;
    std::vector<xcb_window_t> roots_;
    xcb_input_device_id_t keyboard_ = 0;
    std::uint8_t inputExtension_ = 0;
};

} // namespace tavro::x11
