#include "Presets/PresetFileName.h"

#include "Presets/PresetStore.h"

#include <QFileInfo>

namespace tavro {

QString PresetFileName::withExtension(const QString& path) {
    const QFileInfo file(path);
    const auto& extension = PresetStore::fileType().extension;
    // Of ".tvp" everything is the name.
    const bool hasExtension =
        file.suffix().compare(extension, Qt::CaseInsensitive) == 0 && !file.completeBaseName().isEmpty();
    return hasExtension ? path : path + QLatin1Char('.') + extension;
}

QString PresetFileName::presetName(const QString& path) {
    return QFileInfo(path).completeBaseName();
}

QString PresetFileName::forPreset(const QString& presetName) {
    // In any encoding less than the 255 bytes that file systems allow.
    constexpr qsizetype longest = 60;
    QString name;
    for (const auto character : presetName.trimmed().left(longest)) {
        const bool isBearable = character != QLatin1Char('/') && character != QLatin1Char('\\') &&
                                character != QLatin1Char(':') && character.isPrint();
        name += isBearable || character.isSurrogate() ? character : QChar(QLatin1Char('-'));
    }
    if (!name.isEmpty() && name.back().isHighSurrogate()) {
        name.chop(1);
    }
    // A hidden file would not be found again.
    if (name.startsWith(QLatin1Char('.'))) {
        name[0] = QLatin1Char('-');
    }
    return name;
}

} // namespace tavro
