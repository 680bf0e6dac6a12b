#include "Updates/QtUpdateFiles.h"

#include "Updates/FileDigest.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTemporaryFile>

#include <filesystem>
#include <system_error>
#include <utility>

namespace tavro {

namespace {

constexpr auto forTheUserAlone = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;

UpdateFailure noFolder(const QString& path) {
    return UpdateFailure::ofSystem(
        QCoreApplication::translate("QtUpdateFiles", "The folder \"%1\" could not be made.").arg(path));
}

std::filesystem::path native(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

} // namespace

Outcome<QString> QtUpdateFiles::applicationSupportFolder() {
    const auto path = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (path.isEmpty() || !QDir().mkpath(path)) {
        return noFolder(path);
    }
    return path;
}

QString QtUpdateFiles::temporaryFolder() const {
    return QDir::tempPath();
}

PlainOutcome QtUpdateFiles::makePrivateFolder(const QString& path) {
    QDir().mkpath(QFileInfo(path).path());
    // Whether this made it or it was there is told by what is there now.
    QDir().mkdir(path, forTheUserAlone);
    const QFileInfo folder(path);
    if (folder.isSymLink() || !folder.isDir() || !QFile::setPermissions(path, forTheUserAlone)) {
        return noFolder(path);
    }
    return std::monostate();
}

Outcome<QString> QtUpdateFiles::makePrivateFile(const QString& folder) {
    QTemporaryFile file(folder + QLatin1String("/.download-XXXXXX"));
    if (!file.open()) {
        return UpdateFailure::ofSystem(file.errorString());
    }
    file.setAutoRemove(false);
    return file.fileName();
}

void QtUpdateFiles::removeLeftovers(const QString& folder) {
    const auto names =
        QDir(folder).entryList({QStringLiteral(".download-??????")},
                               QDir::Files | QDir::Hidden | QDir::NoSymLinks | QDir::CaseSensitive);
    for (const auto& name : names) {
        removeFile(folder + QLatin1Char('/') + name);
    }
}

PlainOutcome QtUpdateFiles::write(const QString& path, const QByteArray& content) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || file.write(content) != content.size() ||
        !file.commit()) {
        return UpdateFailure::ofSystem(file.errorString());
    }
    return std::monostate();
}

PlainOutcome QtUpdateFiles::replace(const QString& path, const QString& newFile) {
    if (const QFileInfo old(path); old.isDir() && !old.isSymLink()) {
        QDir(path).removeRecursively();
    }
    std::error_code error;
    std::filesystem::rename(native(newFile), native(path), error);
    if (error) {
        return UpdateFailure::ofSystem(QString::fromStdString(error.message()));
    }
    return std::monostate();
}

void QtUpdateFiles::removeFile(const QString& path) {
    QFile::remove(path);
}

void QtUpdateFiles::removeFolder(const QString& path) {
    QDir().rmdir(path);
}

QStringList QtUpdateFiles::names(const QString& folder) const {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                  QDir::Name);
}

std::unique_ptr<PendingWork> QtUpdateFiles::digest(const QString& path, Completion<QString> completion) {
    return std::make_unique<FileDigest>(path, std::move(completion));
}

} // namespace tavro
