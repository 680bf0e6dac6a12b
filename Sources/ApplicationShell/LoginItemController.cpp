#include "ApplicationShell/LoginItemController.h"

namespace tavro {

bool LoginItemController::setEnabled(bool isOn) {
    using Status = LoginItemService::Status;
    const auto& key = PreferenceKey::launchAtLogin.name;
    if (service_.status() != (isOn ? Status::enabled : Status::notRegistered)) {
        const auto failure = isOn ? service_.registerItem() : service_.unregisterItem();
        if (failure) {
            defaults_.setValue(key, isEnabled());
            return false;
        }
    }
    defaults_.setValue(key, isOn);
    if (isOn) {
        // The user is at the window now: it is the next boot that starts minimized.
        defaults_.setValue(PreferenceKey::lastMinimizedBootID.name, preferences_.currentBootIdentifier());
    }
    return true;
}

} // namespace tavro
