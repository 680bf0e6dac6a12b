#pragma once

#include "ApplicationShell/TextEditing.h"
#include "PlatformInterfaces/Application/MenuBar.h"
#include "PlatformInterfaces/ApplicationVisibility.h"

#include <QCoreApplication>

#include <functional>
#include <vector>

namespace tavro {

/// The menus of the application and what their items do. Main thread only.
class MainMenu final : public MenuBar::Client {
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

    [[nodiscard]] const std::vector<Menu>& menus() const override { return menus_; }

    [[nodiscard]] bool isEnabled(MenuAction action) const override;
    void perform(MenuAction action) const override;

private:
    ApplicationVisibility& visibility_;
    TextEditing& textEditing_;
    Actions actions_;
    std::vector<Menu> menus_;
};

} // namespace tavro
