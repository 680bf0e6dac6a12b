#pragma once

#include <QString>

#include <vector>

namespace tavro {

/// What the items of the main menu do.
enum class MenuAction {
    none,
    checkForUpdates,
    hide,
    hideOthers,
    showAll,
    quit,
    undo,
    redo,
    cut,
    copy,
    paste,
    selectAll,
    closeWindow,
    minimize,
};

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

/// One of the menus that stand side by side.
struct Menu {
    QString title;
    std::vector<MenuItem> items;
};

} // namespace tavro
