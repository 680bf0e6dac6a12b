#include "UserInterface/UpdateQuickWindow.h"

namespace tavro {

void UpdateQuickWindow::create(UpdateViewModel& model) {
    if (!scene_.create(QStringLiteral("UpdateWindow.qml"),
                       {{QStringLiteral("model"), QVariant::fromValue<QObject*>(&model)}})) {
        qCritical("The update window could not be made.");
    }
}

} // namespace tavro
