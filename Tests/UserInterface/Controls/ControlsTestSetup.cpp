#include "UserInterface/Controls/ControlsTestSetup.h"

#include "UserInterface/Controls/PlayedKeyboard.h"
#include "UserInterface/SceneModule.h"

#include <QQmlContext>
#include <QQmlEngine>

namespace tavro {

ControlsTestSetup::ControlsTestSetup() = default;

ControlsTestSetup::~ControlsTestSetup() = default;

void ControlsTestSetup::qmlEngineAvailable(QQmlEngine* engine) {
    SceneModule::makeAvailable();
    keyboard_ = std::make_unique<PlayedKeyboard>();
    engine->rootContext()->setContextProperty(QStringLiteral("keyboard"), keyboard_.get());
    engine->rootContext()->setContextProperty(QStringLiteral("pointer"), &pointer_);
}

} // namespace tavro
