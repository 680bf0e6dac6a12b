#pragma once

#include <QStringList>
#include <QVariantMap>

namespace tavro {

/// Tries every component of the scene's module.
class SceneSelfTest {
public:
    SceneSelfTest() = delete;

    /// Compiles and creates each of them by itself in an engine of its own. Those of the given properties
    /// that a component has are set. One line, with the file's name, for every error and every warning.
    [[nodiscard]] static QStringList problems(const QVariantMap& initialProperties);
};

} // namespace tavro
