#include "UserInterface/SceneSelfTest.h"

#include "KeyboardInput/KeyboardAccess.h"
#include "UserInterface/SceneModule.h"
#include "UserInterface/TutorialSteps.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QMetaProperty>
#include <QPainter>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QSvgRenderer>

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

/// Only texts that the module's own file declares.
QStringList helpTextProblems() {
    const auto fileName = QStringLiteral("HelpTexts.qml");
    QQmlEngine engine;
    QQmlComponent component(&engine);
    loadComponent(component, fileName);
    const std::unique_ptr<QObject> user(component.create());
    const auto* texts = user == nullptr ? nullptr : user->property("used").value<QObject*>();
    // Why it cannot be loaded is told where every file is loaded.
    return texts == nullptr ? QStringList{} : SceneSelfTest::textProblems(*texts, fileName);
}

bool showsSomething(QSvgRenderer& drawing) {
    QImage image(64, 64, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter);
    painter.end();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 0) {
                return true;
            }
        }
    }
    return false;
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
    const auto symbolFolder = SceneModule::resourceOf(QStringLiteral("Symbols"));
    problems.append(symbolProblems(symbolFolder));
    problems.append(helpTextProblems());
    for (const auto access : {KeyboardAccess::accessibilitySettings, KeyboardAccess::displayOrInputDevices}) {
        problems.append(tourProblems(TutorialSteps::make(QStringLiteral("^"), access), symbolFolder));
    }
    return problems;
}

QStringList SceneSelfTest::symbolProblems(const QString& folder) {
    const auto names = QDir(folder).entryList({QStringLiteral("*.svg")}, QDir::Files, QDir::Name);
    if (names.isEmpty()) {
        return {QStringLiteral("%1: holds no drawings").arg(folder)};
    }
    QStringList problems;
    for (const auto& name : names) {
        QSvgRenderer drawing;
        if (!drawing.load(QDir(folder).filePath(name))) {
            problems.append(QStringLiteral("%1: is not a drawing").arg(name));
        } else if (!showsSomething(drawing)) {
            problems.append(QStringLiteral("%1: shows nothing").arg(name));
        }
    }
    return problems;
}

QStringList SceneSelfTest::textProblems(const QObject& texts, const QString& fileName) {
    QStringList problems;
    bool hasTexts = false;
    const auto* type = texts.metaObject();
    // The first of every object's is its object name.
    for (int index = QObject::staticMetaObject.propertyCount(); index < type->propertyCount(); ++index) {
        const auto property = type->property(index);
        if (property.metaType() != QMetaType::fromType<QString>()) {
            continue;
        }
        hasTexts = true;
        if (property.read(&texts).toString().trimmed().isEmpty()) {
            problems.append(
                QStringLiteral("%1: %2 is empty").arg(fileName, QString::fromLatin1(property.name())));
        }
    }
    if (!hasTexts) {
        problems.append(QStringLiteral("%1: holds no texts").arg(fileName));
    }
    return problems;
}

QStringList SceneSelfTest::tourProblems(const QList<TutorialStep>& steps, const QString& symbolFolder) {
    constexpr qsizetype numberOfSteps = 6;
    QStringList problems;
    if (steps.size() != numberOfSteps) {
        problems.append(QStringLiteral("The tour has %1 steps.").arg(steps.size()));
    }
    for (qsizetype index = 0; index < steps.size(); ++index) {
        const auto& step = steps[index];
        if (step.title.trimmed().isEmpty() || step.body.trimmed().isEmpty()) {
            problems.append(QStringLiteral("Step %1 of the tour lacks a text.").arg(index + 1));
        }
        if (!QFile::exists(QStringLiteral("%1/%2.svg").arg(symbolFolder, step.symbol))) {
            problems.append(
                QStringLiteral("Step %1 of the tour wants the drawing \"%2\", which is not there.")
                    .arg(index + 1)
                    .arg(step.symbol));
        }
    }
    return problems;
}

} // namespace tavro
