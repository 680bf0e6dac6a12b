#include "UserInterface/MainQuickWindow.h"

#include <QScreen>

namespace tavro {

bool MainQuickWindow::create(const WindowMeasures& measures) {
    if (!loader_.create()) {
        return false;
    }
    auto& window = *loader_.window();
    const QSize size = QSizeF(measures.width, measures.height).toSize();
    window.setMinimumSize(QSizeF(measures.minimumWidth, measures.minimumHeight).toSize());
    window.setMaximumSize(QSizeF(measures.maximumWidth(), measures.maximumHeight()).toSize());
    window.resize(size);
    if (const auto* screen = window.screen()) {
        const auto available = screen->availableGeometry();
        const auto centred = available.center() - QRect(QPoint(), size).center();
        // On a small screen rather its lower edge out of sight than its title.
        window.setFramePosition({qMax(available.left(), centred.x()), qMax(available.top(), centred.y())});
    }
    aspect_.setContentAspectRatio(window, size, size);
    fitter_.emplace(window, loader_.panels(), aspect_);
    return true;
}

void MainQuickWindow::show() {
    loader_.show();
}

void MainQuickWindow::minimize() {
    loader_.window()->showMinimized();
}

void MainQuickWindow::activate() {
    loader_.window()->requestActivate();
}

} // namespace tavro
