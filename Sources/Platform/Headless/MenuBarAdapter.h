#pragma once

#include "PlatformInterfaces/Application/MenuBar.h"

namespace tavro::headless {

/// For systems where every window shows its menus itself. Keeps whose menus were to be shown.
class MenuBarAdapter final : public MenuBar {
public:
    const Client* installed = nullptr;

    void install(const Client& client) override { installed = &client; }

    [[nodiscard]] bool isThere() const override { return false; }
};

} // namespace tavro::headless
