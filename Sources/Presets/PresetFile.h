#pragma once

#include "PerformanceModel/TAVROPreset.h"

#include <QCoreApplication>
#include <QFileDevice>
#include <QString>

#include <stdexcept>

namespace tavro {

/// A preset file that cannot be read or written. `what()` is the file's name and the reason, "FILE: reason".
class PresetFileError : public std::runtime_error {
public:
    enum class Kind {
        /// Not there, or the system does not let it be read.
        unreadable,
        /// A folder, a device, a pipe: nothing that a preset is kept in.
        notAFile,
        tooLarge,
        notJson,
        /// JSON, but no preset.
        wrongContent,
        unwritable,
    };

    PresetFileError(Kind kind, const QString& file, const QString& reason)
        : std::runtime_error((file + QStringLiteral(": ") + reason).toStdString()), kind_(kind) {}

    [[nodiscard]] Kind kind() const { return kind_; }

    /// `what()` for a label.
    [[nodiscard]] QString text() const { return QString::fromUtf8(what()); }

private:
    Kind kind_;
};

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
