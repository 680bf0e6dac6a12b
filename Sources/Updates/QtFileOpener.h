#pragma once

#include "Updates/FileOpener.h"

namespace tavro {

/// Opens files with the desktop's services. Needs the application object of a program with windows.
class QtFileOpener final : public FileOpener {
public:
    [[nodiscard]] bool open(const QString& path) override;
};

} // namespace tavro
