#pragma once

#include "ApplicationShell/PresetFileError.h"
#include "ApplicationShell/TAVROPreset.h"

#include <QCoreApplication>
#include <QFileDevice>
#include <QString>

namespace tavro {

/// Presets in files of their own, to be passed on. Everything throws `PresetFileError`.
class PresetFile {
    Q_DECLARE_TR_FUNCTIONS(tavro::PresetFile)

public:
    PresetFile() = delete;

    /// A larger file is refused before its content is looked at.
    static constexpr qint64 mostBytes = qint64{1024} * 1024;

    /// Only regular files are opened: reading never waits for somebody to write and always ends.
    [[nodiscard]] static TAVROPreset read(const QString& path);

    /// The same from what is open already, to its end or to `mostBytes`; the name is for the error.
    [[nodiscard]] static TAVROPreset read(QFileDevice& source, const QString& name);

    /// The file is written whole or stays as it is, whatever happens meanwhile. A file that is there keeps
    /// its permissions, and a link goes on leading to it.
    static void write(const TAVROPreset& preset, const QString& path);
};

} // namespace tavro
