#pragma once

#include "PlatformInterfaces/Application/Menu.h"

#include <vector>

namespace tavro {

/// The system's own place for the menus of the application in front. One adapter per platform.
class MenuBar {
public:
    /// Whose menus are shown.
    class Client {
    public:
        Client() = default;
        Client(const Client&) = delete;
        Client& operator=(const Client&) = delete;

        /// From left to right.
        [[nodiscard]] virtual const std::vector<Menu>& menus() const = 0;

        /// Whether the action can be done now. Changes with the session, and with what has the keyboard.
        [[nodiscard]] virtual bool isEnabled(MenuAction action) const = 0;

        /// Does nothing when the action is not enabled.
        virtual void perform(MenuAction action) const = 0;

    protected:
        ~Client() = default;
    };

    MenuBar() = default;
    MenuBar(const MenuBar&) = delete;
    MenuBar& operator=(const MenuBar&) = delete;
    virtual ~MenuBar() = default;

    /// Shows the client's menus there, their shortcuts included, for as long as this exists. The client must
    /// outlive this. Main thread only.
    virtual void install(const Client& client) = 0;

    /// Whether there is such a place. Without it the window shows the menu itself.
    [[nodiscard]] virtual bool isThere() const = 0;
};

} // namespace tavro
