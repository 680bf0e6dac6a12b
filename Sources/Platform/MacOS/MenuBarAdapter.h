#pragma once

#include "PlatformInterfaces/Application/MenuBar.h"

namespace tavro::macos {

/// The menu bar at the top of the screen.
class MenuBarAdapter final : public MenuBar {
public:
    ~MenuBarAdapter() override;

    void install(const Client& client) override;

    [[nodiscard]] bool isThere() const override { return true; }

private:
    /// The object that the menu's items talk to. Owned; a menu item itself keeps none.
    void* target_ = nullptr;
};

} // namespace tavro::macos
