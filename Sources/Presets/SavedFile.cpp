#include "Presets/SavedFile.h"

#include <QSaveFile>

namespace tavro {

QString SavedFile::write(const QString& path, std::string_view content) {
    QSaveFile file(path);
    // Without a buffer: `commit` does not notice that emptying it fails, and then replaces the old file by
    // half a new one.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        return file.errorString();
    }
    while (!content.empty()) {
        // What does not fit in one go tells the reason at the next.
        const auto written = file.write(content.data(), static_cast<qint64>(content.size()));
        if (written <= 0) {
            return file.errorString();
        }
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return file.commit() ? QString() : file.errorString();
}

} // namespace tavro
