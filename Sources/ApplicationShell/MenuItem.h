#pragma once

#include "ApplicationShell/MenuAction.h"

#include <QString>

namespace tavro {

/// One line of a menu. Without an action it is a line between groups.
struct MenuItem {
    MenuAction action = MenuAction::none;
    QString title;
    /// The key that does the same, together with Command; NUL when there is none. A lower-case letter.
    char16_t key = 0;
    /// Whether the key needs Option or Shift as well.
    bool needsOption = false;
    bool needsShift = false;

    [[nodiscard]] bool isSeparator() const { return action == MenuAction::none; }
};

} // namespace tavro
