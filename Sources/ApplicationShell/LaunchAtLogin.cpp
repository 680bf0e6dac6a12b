#include "ApplicationShell/LaunchAtLogin.h"

namespace tavro {

void LaunchAtLogin::setEnabled(bool isOn) {
    isEnabled_ = loginItem_.setEnabled(isOn) ? isOn : loginItem_.isEnabled();
    Q_EMIT changed();
}

} // namespace tavro
