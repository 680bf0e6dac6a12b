#pragma once

#include "Updates/Outcome.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace tavro {

/// The files that an update needs. Failures carry the system's reason. Main thread only.
class UpdateFiles {
public:
    UpdateFiles() = default;
    UpdateFiles(const UpdateFiles&) = delete;
    UpdateFiles& operator=(const UpdateFiles&) = delete;
    virtual ~UpdateFiles() = default;

    /// The folder for the user's data of all applications, made when it is missing.
    [[nodiscard]] virtual Outcome<QString> applicationSupportFolder() = 0;

    /// The folder for files that nobody misses later.
    [[nodiscard]] virtual QString temporaryFolder() const = 0;

    /// Makes the folder, and those above it, unless it is there. In either case it is for the user alone
    /// afterwards; a link or somebody else's folder is a failure.
    [[nodiscard]] virtual PlainOutcome makePrivateFolder(const QString& path) = 0;

    /// An empty file for the user alone, under a name in this folder that nothing has; gives its path.
    [[nodiscard]] virtual Outcome<QString> makePrivateFile(const QString& folder) = 0;

    /// Removes what earlier runs of the program have left of `makePrivateFile` in this folder. Files of other
    /// names, links and folders stay.
    virtual void removeLeftovers(const QString& folder) = 0;

    /// Writes the file whole or not at all, in place of what is there.
    [[nodiscard]] virtual PlainOutcome write(const QString& path, const QByteArray& content) = 0;

    /// Puts a file in the place of what is there, whatever it is.
    [[nodiscard]] virtual PlainOutcome replace(const QString& path, const QString& newFile) = 0;

    /// Removes a file; nothing happens when that cannot be done.
    virtual void removeFile(const QString& path) = 0;

    /// Removes an empty folder; nothing happens when that cannot be done.
    virtual void removeFolder(const QString& path) = 0;

    /// The names of everything in a folder, sorted; none when it cannot be read.
    [[nodiscard]] virtual QStringList names(const QString& folder) const = 0;

    /// The SHA-256 of a file as lower-case hexadecimal digits, worked out without holding up the main thread.
    [[nodiscard]] virtual std::unique_ptr<PendingWork> digest(const QString& path,
                                                              Completion<QString> completion) = 0;
};

} // namespace tavro
