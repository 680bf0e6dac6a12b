#pragma once

#include "PlatformInterfaces/ApplicationVisibility.h"

#include <cstdint>
#include <vector>

#include <xcb/xcb.h>

namespace tavro::x11 {

/// Through the window manager: hidden is iconified. Needs one that lists the windows (EWMH).
class ApplicationVisibilityAdapter final : public ApplicationVisibility {
public:
    /// The application is connected to an X server.
    ApplicationVisibilityAdapter();

    [[nodiscard]] bool isAvailable() const override;
    void hide() override;
    void hideOthers() override;
    void showAll() override;

private:
    struct Atoms {
        explicit Atoms(xcb_connection_t* connection);

        xcb_atom_t supportingCheck;
        xcb_atom_t supported;
        xcb_atom_t clientList;
        xcb_atom_t activeWindow;
        xcb_atom_t changeState;
        xcb_atom_t state;
        xcb_atom_t windowType;
        /// The types of the windows that nobody works in.
        std::vector<xcb_atom_t> desktopTypes;
    };

    [[nodiscard]] std::vector<std::uint32_t> clients() const;
    [[nodiscard]] bool isOnScreen(xcb_window_t window) const;
    [[nodiscard]] bool belongsToAnApplication(xcb_window_t window) const;
    void ask(xcb_window_t window, xcb_atom_t what, std::uint32_t value) const;

    xcb_connection_t* connection_;
    xcb_window_t root_;
    Atoms atoms_;
    std::vector<xcb_window_t> hidden_;
};

} // namespace tavro::x11
