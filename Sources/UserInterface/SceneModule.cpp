#include "UserInterface/SceneModule.h"

#include <QDir>
#include <QtGlobal>

// The build writes these for the module; there is no header that declares the first.
extern void qml_register_types_Tavro();

namespace tavro {

namespace {

QString folder() {
    return QStringLiteral(":/qt-project.org/imports/Tavro");
}

} // namespace

void SceneModule::makeAvailable() {
    static volatile auto registration = &qml_register_types_Tavro;
    Q_UNUSED(registration)
}

QUrl SceneModule::urlOf(const QString& fileName) {
    return QUrl(QStringLiteral("qrc") + resourceOf(fileName));
}

QString SceneModule::resourceOf(const QString& fileName) {
    return folder() + QLatin1Char('/') + fileName;
}

QStringList SceneModule::fileNames() {
    return QDir(folder()).entryList({QStringLiteral("*.qml")}, QDir::Files, QDir::Name);
}

} // namespace tavro
