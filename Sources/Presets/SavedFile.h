#pragma once

#include <QString>

#include <string_view>

namespace tavro {

/// Files that are written whole or not at all.
class SavedFile {
public:
    SavedFile() = delete;

    /// Puts the content in place of the file, or where there was none. An old file keeps its permissions, and
    /// a link goes on leading to it. Empty when that is done; otherwise the reason why not, and everything is
    /// as it was.
    [[nodiscard]] static QString write(const QString& path, std::string_view content);
};

} // namespace tavro
