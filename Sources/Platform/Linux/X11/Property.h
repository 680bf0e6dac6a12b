#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include <xcb/xcb.h>

namespace tavro::x11 {

/// Reads what windows say about themselves. Every call waits for the X server's answer.
class Property {
public:
    Property() = delete;

    /// The number of a name, the same for all programs. XCB_ATOM_NONE when the server does not answer.
    [[nodiscard]] static xcb_atom_t atom(xcb_connection_t* connection, std::string_view name);

    /// The property's numbers of 32 bits. Empty when the window or the property is not there, or when it has
    /// another type.
    [[nodiscard]] static std::vector<std::uint32_t> numbers(xcb_connection_t* connection, xcb_window_t window,
                                                            xcb_atom_t property, xcb_atom_t type);
};

} // namespace tavro::x11
