#pragma once

#include "PlatformInterfaces/LoginItemService.h"
#include "PlatformInterfaces/UserDefaults.h"
#include "Preferences/AppPreferences.h"

#include <string>

namespace tavro {

/// Switches launch at login on and off, and remembers it. Main thread only.
class LoginItemController {
public:
    /// All must outlive this; the preferences are those of the defaults.
    LoginItemController(LoginItemService& service, UserDefaults& defaults, const Preferences& preferences)
        : service_(service), defaults_(defaults), preferences_(preferences) {}

    /// Whether the login item is in the wanted state afterwards. When the system refuses, what it reports is
    /// remembered in place of the wish.
    bool setEnabled(bool isOn);

    /// What the system reports.
    [[nodiscard]] bool isEnabled() const { return service_.status() == LoginItemService::Status::enabled; }

    /// What the login item is on this system, where the usual words do not fit; empty otherwise.
    [[nodiscard]] std::string note() const { return service_.note(); }

private:
    LoginItemService& service_;
    UserDefaults& defaults_;
    const Preferences& preferences_;
};

} // namespace tavro
