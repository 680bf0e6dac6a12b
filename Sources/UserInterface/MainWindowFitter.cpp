#include "UserInterface/MainWindowFitter.h"

#include "ApplicationShell/WindowFitting.h"

#include <QGuiApplication>
#include <QScreen>

#include <optional>

namespace tavro {

namespace {

std::optional<double> availableHeight(const QWindow& window) {
    const auto* screen = window.screen() != nullptr ? window.screen() : QGuiApplication::primaryScreen();
    return screen != nullptr ? std::optional<double>(screen->availableGeometry().height()) : std::nullopt;
}

QSize rounded(const WindowFitting::Size& size) {
    return QSizeF(size.width, size.height).toSize();
}

} // namespace

MainWindowFitter::MainWindowFitter(QWindow& window, const WindowPanels& panels, WindowAspect& aspect)
    : window_(&window), panels_(panels), aspect_(aspect) {
    connect(&panels, &WindowPanels::preferredWindowHeightChanged, this, &MainWindowFitter::fit);
    connect(&window, &QWindow::activeChanged, this, &MainWindowFitter::fitWhenItAppears);
    fitWhenItAppears();
}

void MainWindowFitter::fitWhenItAppears() {
    if (!hasAppeared_ && window_ != nullptr && window_ == QGuiApplication::focusWindow()) {
        hasAppeared_ = true;
        fit();
    }
}

void MainWindowFitter::fit() {
    if (window_ == nullptr || window_ != QGuiApplication::focusWindow()) {
        return;
    }
    const auto frame = window_->geometry();
    const auto fit = WindowFitting::fit(
        {double(frame.x()), double(frame.y()), double(frame.width()), double(frame.height())},
        availableHeight(*window_), panels_.preferredWindowHeight());
    window_->setMinimumSize(rounded(fit.minimum));
    window_->setMaximumSize(rounded(fit.maximum));
    const auto size = fit.target ? rounded({fit.target->width, fit.target->height}) : frame.size();
    aspect_.setContentAspectRatio(*window_, rounded(fit.aspect), size);
    // A window that fills the screen is the window manager's; the surface in it is scaled in any case.
    if (fit.target && window_->windowStates() == Qt::WindowNoState) {
        // The position stays, so that the left and the top edge do.
        window_->resize(size);
    }
}

} // namespace tavro
