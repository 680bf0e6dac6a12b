#include "UserInterface/SceneWindow.h"

#include "UserInterface/SceneModule.h"

#include <QScreen>

namespace tavro {

bool SceneWindow::create(const QString& fileName, const QVariantMap& properties) {
    SceneModule::makeAvailable();
    engine_.setInitialProperties(properties);
    engine_.load(SceneModule::urlOf(fileName));
    auto* const created = window();
    if (created == nullptr) {
        return false;
    }
    if (const auto* const screen = created->screen(); screen != nullptr) {
        const auto middle = screen->availableGeometry().center();
        created->setPosition(middle - QPoint(created->width() / 2, created->height() / 2));
    }
    return true;
}

QQuickWindow* SceneWindow::window() const {
    const auto roots = engine_.rootObjects();
    return roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(roots.front());
}

void SceneWindow::bringToFront() {
    if (auto* const shown = window(); shown != nullptr) {
        shown->show();
        shown->raise();
        shown->requestActivate();
    }
}

} // namespace tavro
