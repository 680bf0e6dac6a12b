#include "Platform/Linux/X11/ApplicationVisibilityAdapter.h"

#include "Platform/Linux/X11/Property.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace tavro::x11 {

namespace {

constexpr std::uint32_t normalState = 1;
constexpr std::uint32_t iconicState = 3;
/// Says that the wish is the user's own, who is to have it granted.
constexpr std::uint32_t fromTheUser = 2;

xcb_connection_t* connectionOfQt() {
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
}

xcb_window_t firstRoot(xcb_connection_t* connection) {
    return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

bool contains(const std::vector<std::uint32_t>& numbers, std::uint32_t number) {
    return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

std::vector<std::uint32_t> ownWindows() {
    std::vector<std::uint32_t> windows;
    for (const auto* window : QGuiApplication::topLevelWindows()) {
        if (window->handle() != nullptr) {
            windows.push_back(static_cast<std::uint32_t>(window->winId()));
        }
    }
    return windows;
}

} // namespace

ApplicationVisibilityAdapter::Atoms::Atoms(xcb_connection_t* connection)
    : supportingCheck(Property::atom(connection, "_NET_SUPPORTING_WM_CHECK")),
      supported(Property::atom(connection, "_NET_SUPPORTED")),
      clientList(Property::atom(connection, "_NET_CLIENT_LIST")),
      activeWindow(Property::atom(connection, "_NET_ACTIVE_WINDOW")),
      changeState(Property::atom(connection, "WM_CHANGE_STATE")),
      state(Property::atom(connection, "WM_STATE")),
      windowType(Property::atom(connection, "_NET_WM_WINDOW_TYPE")),
      desktopTypes{Property::atom(connection, "_NET_WM_WINDOW_TYPE_DESKTOP"),
                   Property::atom(connection, "_NET_WM_WINDOW_TYPE_DOCK"),
                   Property::atom(connection, "_NET_WM_WINDOW_TYPE_NOTIFICATION"),
                   Property::atom(connection, "_NET_WM_WINDOW_TYPE_SPLASH")} {}

ApplicationVisibilityAdapter::ApplicationVisibilityAdapter()
    : connection_(connectionOfQt()), root_(firstRoot(connection_)), atoms_(connection_) {}

bool ApplicationVisibilityAdapter::isAvailable() const {
    // What a window manager that has gone away supported still stands there; its own window does not.
    const auto check = Property::numbers(connection_, root_, atoms_.supportingCheck, XCB_ATOM_WINDOW);
    if (check.empty() ||
        Property::numbers(connection_, check[0], atoms_.supportingCheck, XCB_ATOM_WINDOW) != check) {
        return false;
    }
    const auto supported = Property::numbers(connection_, root_, atoms_.supported, XCB_ATOM_ATOM);
    return contains(supported, atoms_.clientList) && contains(supported, atoms_.activeWindow);
}

void ApplicationVisibilityAdapter::hide() {
    for (auto* window : QGuiApplication::topLevelWindows()) {
        if (window->isVisible()) {
            window->showMinimized();
        }
    }
}

void ApplicationVisibilityAdapter::hideOthers() {
    const auto own = ownWindows();
    for (const auto window : clients()) {
        if (!contains(own, window) && belongsToAnApplication(window) && isOnScreen(window)) {
            ask(window, atoms_.changeState, iconicState);
            hidden_.push_back(window);
        }
    }
    xcb_flush(connection_);
}

void ApplicationVisibilityAdapter::showAll() {
    const auto present = clients();
    for (const auto window : std::exchange(hidden_, {})) {
        if (contains(present, window) && !isOnScreen(window)) {
            ask(window, atoms_.activeWindow, fromTheUser);
        }
    }
    if (const auto* front = QGuiApplication::focusWindow()) {
        ask(static_cast<xcb_window_t>(front->winId()), atoms_.activeWindow, fromTheUser);
    }
    xcb_flush(connection_);
}

std::vector<std::uint32_t> ApplicationVisibilityAdapter::clients() const {
    return Property::numbers(connection_, root_, atoms_.clientList, XCB_ATOM_WINDOW);
}

bool ApplicationVisibilityAdapter::isOnScreen(xcb_window_t window) const {
    const auto state = Property::numbers(connection_, window, atoms_.state, atoms_.state);
    return !state.empty() && state[0] == normalState;
}

bool ApplicationVisibilityAdapter::belongsToAnApplication(xcb_window_t window) const {
    const auto types = Property::numbers(connection_, window, atoms_.windowType, XCB_ATOM_ATOM);
    return std::none_of(types.begin(), types.end(),
                        [this](auto type) { return contains(atoms_.desktopTypes, type); });
}

void ApplicationVisibilityAdapter::ask(xcb_window_t window, xcb_atom_t what, std::uint32_t value) const {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = what;
    message.data.data32[0] = value;
    xcb_send_event(connection_, 0, root_,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
}

} // namespace tavro::x11
