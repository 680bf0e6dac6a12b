#pragma once

namespace tavro {

class MainMenu;

/// The system's own place for the menus of the application in front. One adapter per platform.
class MenuBar {
public:
    MenuBar() = default;
    MenuBar(const MenuBar&) = delete;
    MenuBar& operator=(const MenuBar&) = delete;
    virtual ~MenuBar() = default;

    /// Shows the menu there, its shortcuts included, for as long as this exists. The menu must outlive this.
    /// Main thread only.
    virtual void install(const MainMenu& menu) = 0;

    /// Whether there is such a place. Without it the window shows the menu itself.
    [[nodiscard]] virtual bool isThere() const = 0;
};

} // namespace tavro
