#pragma once

#include "ApplicationShell/LoginItemController.h"

#include <QObject>
#include <QString>

namespace tavro {

/// The switch for launch at login. Shows what the system has, never only what was wished. Main thread only.
class LaunchAtLogin : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isEnabled READ isEnabled WRITE setEnabled NOTIFY changed)
    /// What it means on this system, where the usual words do not fit; empty otherwise.
    Q_PROPERTY(QString note READ note CONSTANT)

public:
    /// Must outlive this.
    explicit LaunchAtLogin(LoginItemController& loginItem)
        : loginItem_(loginItem), isEnabled_(loginItem.isEnabled()) {}

    [[nodiscard]] bool isEnabled() const { return isEnabled_; }

    void setEnabled(bool isOn);

    [[nodiscard]] QString note() const { return QString::fromStdString(loginItem_.note()); }

Q_SIGNALS:
    /// Also when a wish was refused: whoever shows the wish has to show what is again.
    void changed();

private:
    LoginItemController& loginItem_;
    bool isEnabled_;
};

} // namespace tavro
