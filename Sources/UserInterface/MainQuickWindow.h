#pragma once

#include "ApplicationShell/ApplicationWindow.h"
#include "PlatformInterfaces/Application/WindowAspect.h"
#include "UserInterface/MainWindowFitter.h"
#include "UserInterface/MainWindowLoader.h"

#include <optional>

namespace tavro {

/// The main window on the screen: the loader's scene, at its size and place.
class MainQuickWindow final : public ApplicationWindow {
public:
    /// Both must outlive this.
    MainQuickWindow(MainWindowLoader& loader, WindowAspect& aspect) : loader_(loader), aspect_(aspect) {}

    [[nodiscard]] bool create(const WindowMeasures& measures) override;
    void show() override;
    void minimize() override;
    void activate() override;

private:
    MainWindowLoader& loader_;
    WindowAspect& aspect_;
    std::optional<MainWindowFitter> fitter_;
};

} // namespace tavro
