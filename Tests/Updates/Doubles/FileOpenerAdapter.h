#pragma once

#include <QString>

#include <vector>

namespace tavro::headless {

/// Opens nothing, and records what it should have opened.
struct FileOpenerAdapter {
    bool declines = false;
    std::vector<QString> opened;

    [[nodiscard]] bool operator()(const QString& path) {
        opened.push_back(path);
        return !declines;
    }
};

} // namespace tavro::headless
