#include "UserInterface/SceneSelfTest.h"

#include "UserInterface/SceneModule.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QQmlComponent>
#include <QQmlEngine>

#include <memory>

namespace tavro {

namespace {

QStringList lines(const QList<QQmlError>& errors) {
    QStringList texts;
    for (const auto& error : errors) {
        texts.append(error.toString());
    }
    return texts;
}

QVariantMap propertiesOf(const QObject& object, const QVariantMap& offered) {
    QVariantMap own;
    for (auto property = offered.begin(); property != offered.end(); ++property) {
        if (object.metaObject()->indexOfProperty(property.key().toUtf8().constData()) >= 0) {
            own.insert(property.key(), property.value());
        }
    }
    return own;
}

bool isSingleton(const QString& fileName) {
    QFile file(SceneModule::resourceOf(fileName));
    return file.open(QIODevice::ReadOnly) && file.readAll().startsWith("pragma Singleton");
}

void loadComponent(QQmlComponent& component, const QString& fileName) {
    if (!isSingleton(fileName)) {
        component.loadUrl(SceneModule::urlOf(fileName), QQmlComponent::PreferSynchronous);
        return;
    }
    // A singleton cannot be created by itself, only used.
    const auto user = QStringLiteral("import QtQml\nimport Tavro\nQtObject { property QtObject used: %1 }")
                          .arg(QFileInfo(fileName).completeBaseName());
    component.setData(user.toUtf8(), SceneModule::urlOf(QStringLiteral("uses-") + fileName));
}

void tryComponent(QQmlEngine& engine, const QString& fileName, const QVariantMap& offered,
                  QStringList& problems) {
    QQmlComponent component(&engine);
    loadComponent(component, fileName);
    if (component.isError()) {
        problems.append(lines(component.errors()));
        return;
    }
    const std::unique_ptr<QObject> object(component.beginCreate(engine.rootContext()));
    if (object == nullptr) {
        problems.append(lines(component.errors()));
        return;
    }
    component.setInitialProperties(object.get(), propertiesOf(*object, offered));
    component.completeCreate();
    problems.append(lines(component.errors()));
    // Bindings that wait for the event loop report here.
    QCoreApplication::processEvents();
}

} // namespace

QStringList SceneSelfTest::problems(const QVariantMap& initialProperties) {
    QStringList problems;
    const auto files = SceneModule::fileNames();
    if (files.isEmpty()) {
        problems.append(QStringLiteral("The program holds no QML files."));
    }
    for (const auto& fileName : files) {
        QQmlEngine engine;
        engine.setOutputWarningsToStandardError(false);
        QObject::connect(&engine, &QQmlEngine::warnings, &engine,
                         [&problems](const QList<QQmlError>& warnings) { problems.append(lines(warnings)); });
        tryComponent(engine, fileName, initialProperties, problems);
    }
    return problems;
}

} // namespace tavro
