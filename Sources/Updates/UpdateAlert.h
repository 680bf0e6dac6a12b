#pragma once

#include <QString>

namespace tavro {

/// Tells the user one thing, with one button "OK". Main thread only.
class UpdateAlert {
public:
    UpdateAlert() = default;
    UpdateAlert(const UpdateAlert&) = delete;
    UpdateAlert& operator=(const UpdateAlert&) = delete;
    virtual ~UpdateAlert() = default;

    /// Returns at once; the rest of the application waits for the user to have read it.
    virtual void show(const QString& message, const QString& informativeText) = 0;
};

} // namespace tavro
