#include "UserInterface/UpdateQuickAlert.h"

namespace tavro {

void UpdateQuickAlert::show(const QString& message, const QString& informativeText) {
    if (auto* const shown = window(); shown != nullptr) {
        shown->setProperty("message", message);
        shown->setProperty("informativeText", informativeText);
    } else if (!scene_.create(QStringLiteral("AlertWindow.qml"),
                              {{QStringLiteral("message"), message},
                               {QStringLiteral("informativeText"), informativeText}})) {
        qCritical("The alert could not be made.");
    }
    scene_.bringToFront();
}

} // namespace tavro
