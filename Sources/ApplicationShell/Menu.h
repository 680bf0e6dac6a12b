#pragma once

#include "ApplicationShell/MenuItem.h"

#include <QString>

#include <vector>

namespace tavro {

/// One of the menus that stand side by side.
struct Menu {
    QString title;
    std::vector<MenuItem> items;
};

} // namespace tavro
