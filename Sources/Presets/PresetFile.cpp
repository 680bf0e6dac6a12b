#include "Presets/PresetFile.h"

#include "PerformanceModel/BoundedJson.h"
#include "PerformanceModel/JsonDecoding.h"
#include "PerformanceModel/PresetText.h"
#include "Presets/SavedFile.h"

#include <QFile>
#include <QFileInfo>

namespace tavro {

namespace {

using Kind = PresetFileError::Kind;

PresetFileError tooLarge(const QString& name) {
    return {Kind::tooLarge, name, PresetFile::tr("larger than 1 MiB, which no preset is")};
}

/// Before anything is opened, as opening a pipe waits for its other end.
void requireRegularFile(const QString& path, const QFileInfo& info) {
    if (info.isDir()) {
        throw PresetFileError(Kind::notAFile, path, PresetFile::tr("a folder, not a file"));
    }
    if (info.exists() && !info.isFile()) {
        throw PresetFileError(Kind::notAFile, path, PresetFile::tr("a device or a pipe, not a file"));
    }
}

void requireReadable(const QString& path) {
    const QFileInfo info(path);
    requireRegularFile(path, info);
    if (!info.exists() && info.isSymLink()) {
        throw PresetFileError(Kind::unreadable, path,
                              PresetFile::tr("a link to %1, which is not there").arg(info.symLinkTarget()));
    }
    if (info.size() > PresetFile::mostBytes) {
        throw tooLarge(path);
    }
    // The kernel's own files say that they are empty, and some of them wait when they are read.
    if (info.exists() && info.size() == 0) {
        throw PresetFileError(Kind::notJson, path, PresetFile::tr("empty"));
    }
}

QByteArray contentOf(QFileDevice& source, const QString& name) {
    QByteArray content;
    // Not a byte more than it takes to know that it is too large: the source may have no end.
    while (content.size() <= PresetFile::mostBytes) {
        const auto part = source.read(PresetFile::mostBytes + 1 - content.size());
        if (part.isEmpty()) {
            if (source.error() != QFileDevice::NoError) {
                throw PresetFileError(Kind::unreadable, name, source.errorString());
            }
            return content;
        }
        content += part;
    }
    throw tooLarge(name);
}

} // namespace

TAVROPreset PresetFile::read(const QString& path) {
    requireReadable(path);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw PresetFileError(Kind::unreadable, path, file.errorString());
    }
    return read(file, path);
}

TAVROPreset PresetFile::read(QFileDevice& source, const QString& name) {
    const auto content = contentOf(source, name);
    try {
        return PresetText::decodeFile({content.constData(), static_cast<std::size_t>(content.size())});
    } catch (const JsonTextError& error) {
        throw PresetFileError(Kind::notJson, name, QString::fromUtf8(error.what()));
    } catch (const DecodingError& error) {
        throw PresetFileError(Kind::wrongContent, name, QString::fromUtf8(error.what()));
    }
}

void PresetFile::write(const TAVROPreset& preset, const QString& path) {
    const auto text = PresetText::encodeFile(preset);
    if (!text) {
        throw PresetFileError(Kind::unwritable, path, tr("a text of the preset is not UTF-8"));
    }
    const QFileInfo old(path);
    // What replaces a device by a file breaks the system for everybody.
    requireRegularFile(path, old);
    if (old.exists() && !old.isWritable()) {
        throw PresetFileError(Kind::unwritable, path, tr("the file, or its disk, is read-only"));
    }
    if (const auto reason = SavedFile::write(path, *text); !reason.isEmpty()) {
        throw PresetFileError(Kind::unwritable, path, reason);
    }
}

} // namespace tavro
