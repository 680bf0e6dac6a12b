#include "Programs/tavro/ApplicationIcon.h"

#include <QDir>

namespace tavro {

QIcon ApplicationIcon::fromResources() {
    QIcon icon;
    const QDir folder(QStringLiteral(":/tavro/icons"));
    for (const auto& name : folder.entryList(QDir::Files)) {
        icon.addFile(folder.filePath(name));
    }
    return icon;
}

} // namespace tavro
