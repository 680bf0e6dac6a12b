#include "Platform/Linux/X11/Connection.h"

#include "Platform/Linux/X11/Repeat/Freed.h"

#include <utility>

namespace tavro::x11 {

std::unique_ptr<Connection> Connection::open(const std::string& display) {
    int screenNumber = 0;
    std::unique_ptr<Connection> made(
        new Connection(xcb_connect(display.empty() ? nullptr : display.c_str(), &screenNumber)));
    if (made->isLost() || !made->findRoots(screenNumber) || !made->findInputExtension() ||
        !made->findKeyboard()) {
        return nullptr;
    }
    made->makeMark();
    return made;
}

void Connection::makeMark() {
    mark_ = xcb_generate_id(get());
    // Never shown, and too small to be in anybody's way.
    xcb_create_window(get(), XCB_COPY_FROM_PARENT, mark_, root_, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
}

bool Connection::findRoots(int screenNumber) {
    auto screen = xcb_setup_roots_iterator(xcb_get_setup(get()));
    for (; screen.rem > 0; xcb_screen_next(&screen), --screenNumber) {
        roots_.push_back(screen.data->root);
        if (screenNumber == 0) {
            root_ = screen.data->root;
        }
    }
    return root_ != XCB_NONE;
}

bool Connection::findInputExtension() {
    const auto* const extension = xcb_get_extension_data(get(), &xcb_input_id);
    if (extension == nullptr || extension->present == 0) {
        return false;
    }
    inputExtension_ = extension->major_opcode;
    const Freed<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(get(), xcb_input_xi_query_version(get(), 2, 2), nullptr));
    return version && std::pair(version->major_version, version->minor_version) >=
                          std::pair<std::uint16_t, std::uint16_t>(2, 2);
}

bool Connection::findKeyboard() {
    const Freed<xcb_input_xi_get_client_pointer_reply_t> pointer(xcb_input_xi_get_client_pointer_reply(
        get(), xcb_input_xi_get_client_pointer(get(), XCB_NONE), nullptr));
    if (!pointer) {
        return false;
    }
    const Freed<xcb_input_xi_query_device_reply_t> devices(
        xcb_input_xi_query_device_reply(get(), xcb_input_xi_query_device(get(), pointer->deviceid), nullptr));
    if (!devices || devices->num_infos == 0) {
        return false;
    }
    // A master's attachment is the master it is paired with.
    keyboard_ = xcb_input_xi_query_device_infos_iterator(devices.get()).data->attachment;
    return true;
}

void Connection::synchronize() const {
    const Freed<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(get(), xcb_get_input_focus(get()), nullptr));
}

} // namespace tavro::x11
