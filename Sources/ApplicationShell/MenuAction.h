#pragma once

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

} // namespace tavro
