#pragma once

#include "ApplicationShell/LoginItemController.h"

#include <QObject>

namespace tavro {

/// The switch for launch at login. Shows what the system has, never only what was wished. Main thread only.
class LaunchAtLogin : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isEnabled READ isEnabled WRITE setEnabled NOTIFY changed)

public:
    /// Must outlive this.
    explicit LaunchAtLogin(LoginItemController& loginItem)
        : loginItem_(loginItem), isEnabled_(loginItem.isEnabled()) {}

    [[nodiscard]] bool isEnabled() const { return isEnabled_; }

    void setEnabled(bool isOn);

Q_SIGNALS:
    /// Also when a wish was refused: whoever shows the wish has to show what is again.
    void changed();

private:
    LoginItemController& loginItem_;
    bool isEnabled_;
};

} // namespace tavro
