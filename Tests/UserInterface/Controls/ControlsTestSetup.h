#pragma once

#include "UserInterface/Controls/PointerEvents.h"

#include <QObject>

#include <memory>

class QQmlEngine;

namespace tavro {

class PlayedKeyboard;

/// Gives the test files what they import: the scene's module, `keyboard`, a PlayedKeyboard,
/// and `pointer`, for PointerEvents.
class ControlsTestSetup : public QObject {
    Q_OBJECT

public:
    ControlsTestSetup();
    ~ControlsTestSetup() override;

public Q_SLOTS:
    /// Called once per test file, before it is loaded.
    void qmlEngineAvailable(QQmlEngine* engine);

private:
    std::unique_ptr<PlayedKeyboard> keyboard_;
    PointerEvents pointer_;
};

} // namespace tavro
