#pragma once

#include "Updates/UpdateWindow.h"
#include "UserInterface/SceneWindow.h"

namespace tavro {

/// The update window on the screen.
class UpdateQuickWindow final : public UpdateWindow {
public:
    void create(UpdateViewModel& model) override;

    void bringToFront() override { scene_.bringToFront(); }

    /// Null before `create`.
    [[nodiscard]] QQuickWindow* window() const { return scene_.window(); }

private:
    SceneWindow scene_;
};

} // namespace tavro
