#pragma once

#include <QIcon>

namespace tavro {

/// The program's icon.
class ApplicationIcon {
public:
    ApplicationIcon() = delete;

    /// In all sizes that are built into the program. Null when none is.
    [[nodiscard]] static QIcon fromResources();
};

} // namespace tavro
