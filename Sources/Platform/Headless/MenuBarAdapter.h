#pragma once

#include "ApplicationShell/MenuBar.h"

namespace tavro::headless {

/// For systems where every window shows its menus itself. Keeps the menu that was to be shown.
class MenuBarAdapter final : public MenuBar {
public:
    const MainMenu* installed = nullptr;

    void install(const MainMenu& menu) override { installed = &menu; }

    [[nodiscard]] bool isThere() const override { return false; }
};

} // namespace tavro::headless
