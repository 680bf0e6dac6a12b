#pragma once

#include <QString>

namespace tavro {

/// Hands files to the system, to be opened with whatever it uses for them.
class FileOpener {
public:
    FileOpener() = default;
    FileOpener(const FileOpener&) = delete;
    FileOpener& operator=(const FileOpener&) = delete;
    virtual ~FileOpener() = default;

    /// False when the system declines. What comes of it later is not told.
    [[nodiscard]] virtual bool open(const QString& path) = 0;
};

} // namespace tavro
