#pragma once

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

} // namespace tavro
