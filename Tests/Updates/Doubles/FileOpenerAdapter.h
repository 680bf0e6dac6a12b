#pragma once

#include "Updates/FileOpener.h"

#include <vector>

namespace tavro::headless {

/// Opens nothing, and records what it should have opened.
class FileOpenerAdapter final : public FileOpener {
public:
    bool declines = false;
    std::vector<QString> opened;

    [[nodiscard]] bool open(const QString& path) override {
        opened.push_back(path);
        return !declines;
    }
};

} // namespace tavro::headless
