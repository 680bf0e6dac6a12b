#pragma once

#include "UserInterface/TutorialStep.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace tavro {

/// Tries everything that the scene's module holds: its components, its drawings and its texts. What is wrong
/// is told in one line each, with the name of the file or the text.
class SceneSelfTest {
public:
    SceneSelfTest() = delete;

    /// All of it. Each component is compiled and created by itself in an engine of its own, with those of the
    /// given properties that it has; a warning of it counts as a problem.
    [[nodiscard]] static QStringList problems(const QVariantMap& initialProperties);

    /// Every drawing of the folder can be read and shows something, and there is at least one.
    [[nodiscard]] static QStringList symbolProblems(const QString& folder);

    /// The object has texts, and none of them is empty.
    [[nodiscard]] static QStringList textProblems(const QObject& texts, const QString& fileName);

    /// There are six steps, each with its texts and with a drawing of the folder.
    [[nodiscard]] static QStringList tourProblems(const QList<TutorialStep>& steps,
                                                  const QString& symbolFolder);
};

} // namespace tavro
