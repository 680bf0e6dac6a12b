#include "Platform/Linux/X11/Property.h"

#include "Platform/Linux/X11/Repeat/Freed.h"

namespace tavro::x11 {

namespace {

// More than any list of windows has.
constexpr std::uint32_t mostNumbers = 65536;

} // namespace

xcb_atom_t Property::atom(xcb_connection_t* connection, std::string_view name) {
    const auto question =
        xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const Freed<xcb_intern_atom_reply_t> answer(xcb_intern_atom_reply(connection, question, nullptr));
    return answer != nullptr ? answer->atom : xcb_atom_t{XCB_ATOM_NONE};
}

std::vector<std::uint32_t> Property::numbers(xcb_connection_t* connection, xcb_window_t window,
                                             xcb_atom_t property, xcb_atom_t type) {
    const auto question = xcb_get_property(connection, 0, window, property, type, 0, mostNumbers);
    // Windows of other programs may be gone by now; that is no error of ours.
    xcb_generic_error_t* error = nullptr;
    const Freed<xcb_get_property_reply_t> answer(xcb_get_property_reply(connection, question, &error));
    const Freed<xcb_generic_error_t> freedError(error);
    if (answer == nullptr || answer->format != 32) {
        return {};
    }
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(answer.get()));
    return {first, first + answer->value_len};
}

} // namespace tavro::x11
