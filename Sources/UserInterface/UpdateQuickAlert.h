#pragma once

#include "Updates/UpdateAlert.h"
#include "UserInterface/SceneWindow.h"

namespace tavro {

/// Alerts on the screen, in one window; a second one takes the place of one that was not read yet.
class UpdateQuickAlert final : public UpdateAlert {
public:
    void show(const QString& message, const QString& informativeText) override;

    /// Null before the first alert.
    [[nodiscard]] QQuickWindow* window() const { return scene_.window(); }

private:
    SceneWindow scene_;
};

} // namespace tavro
