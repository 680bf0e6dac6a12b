#pragma once

#include "KeyboardInput/KeyboardAccess.h"
#include "UserInterface/TutorialStep.h"

#include <QCoreApplication>
#include <QList>

namespace tavro {

/// The texts of the quick tour.
class TutorialSteps {
    Q_DECLARE_TR_FUNCTIONS(TutorialSteps)

public:
    TutorialSteps() = delete;

    /// The six steps in their order. `hotkey` is the one of Global Play as the user reads it.
    [[nodiscard]] static QList<TutorialStep> make(const QString& hotkey, KeyboardAccess access);

private:
    [[nodiscard]] static QString noteOn(KeyboardAccess access);
};

} // namespace tavro
