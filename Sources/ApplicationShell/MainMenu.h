#pragma once

#include "ApplicationShell/ApplicationVisibility.h"
#include "ApplicationShell/Menu.h"
#include "ApplicationShell/TextEditing.h"

#include <QCoreApplication>

#include <functional>
#include <vector>

namespace tavro {

/// The menus of the application and what their items do. Main thread only.
class MainMenu {
    Q_DECLARE_TR_FUNCTIONS(tavro::MainMenu)

public:
    /// None may be empty, but for the first: without it there is no such item.
    struct Actions {
        std::function<void()> checkForUpdates;
        std::function<void()> quit;
        /// Both for the window that has the keyboard.
        std::function<void()> closeWindow;
        std::function<void()> minimizeWindow;
    };

    /// Visibility and text editing must outlive this.
    MainMenu(ApplicationVisibility& visibility, TextEditing& textEditing, Actions actions);

    /// From left to right.
    [[nodiscard]] const std::vector<Menu>& menus() const { return menus_; }

    /// Whether the action can be done now. Changes with the session, and with what has the keyboard.
    [[nodiscard]] bool isEnabled(MenuAction action) const;

    /// Does nothing when the action is not enabled.
    void perform(MenuAction action) const;

private:
    ApplicationVisibility& visibility_;
    TextEditing& textEditing_;
    Actions actions_;
    std::vector<Menu> menus_;
};

} // namespace tavro
