#include "Updates/QtFileOpener.h"

#include <QDesktopServices>
#include <QUrl>

namespace tavro {

bool QtFileOpener::open(const QString& path) {
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

} // namespace tavro
