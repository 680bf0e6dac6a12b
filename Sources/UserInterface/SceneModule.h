#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

namespace tavro {

/// The scene's module, which is built into the program.
class SceneModule {
public:
    SceneModule() = delete;

    /// Registers the types and the files. Must be called before an engine loads one of them: a linker drops
    /// what nothing refers to. May be called again.
    static void makeAvailable();

    /// Where the engine finds one of the module's files.
    [[nodiscard]] static QUrl urlOf(const QString& fileName);

    /// The same as a path of the resource system.
    [[nodiscard]] static QString resourceOf(const QString& fileName);

    /// The names of all its QML files.
    [[nodiscard]] static QStringList fileNames();
};

} // namespace tavro
