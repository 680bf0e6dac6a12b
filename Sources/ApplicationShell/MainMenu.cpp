#include "ApplicationShell/MainMenu.h"

#include <utility>

namespace tavro {

namespace {

Menu applicationMenu(bool offersUpdates) {
    Menu menu{.title = MainMenu::tr("TAVRO"), .items = {}};
    if (offersUpdates) {
        menu.items = {{.action = MenuAction::checkForUpdates, .title = MainMenu::tr("Check for Updates...")},
                      {}};
    }
    menu.items.insert(menu.items.end(),
                      {{.action = MenuAction::hide, .title = MainMenu::tr("Hide TAVRO"), .key = u'h'},
                       {.action = MenuAction::hideOthers,
                        .title = MainMenu::tr("Hide Others"),
                        .key = u'h',
                        .needsOption = true},
                       {.action = MenuAction::showAll, .title = MainMenu::tr("Show All")},
                       {},
                       {.action = MenuAction::quit, .title = MainMenu::tr("Quit TAVRO"), .key = u'q'}});
    return menu;
}

Menu editMenu() {
    return {.title = MainMenu::tr("Edit"),
            .items = {
                {.action = MenuAction::undo, .title = MainMenu::tr("Undo"), .key = u'z'},
                {.action = MenuAction::redo, .title = MainMenu::tr("Redo"), .key = u'z', .needsShift = true},
                {},
                {.action = MenuAction::cut, .title = MainMenu::tr("Cut"), .key = u'x'},
                {.action = MenuAction::copy, .title = MainMenu::tr("Copy"), .key = u'c'},
                {.action = MenuAction::paste, .title = MainMenu::tr("Paste"), .key = u'v'},
                {.action = MenuAction::selectAll, .title = MainMenu::tr("Select All"), .key = u'a'}}};
}

Menu windowMenu() {
    return {.title = MainMenu::tr("Window"),
            .items = {{.action = MenuAction::closeWindow, .title = MainMenu::tr("Close Window"), .key = u'w'},
                      {.action = MenuAction::minimize, .title = MainMenu::tr("Minimize"), .key = u'm'}}};
}

} // namespace

MainMenu::MainMenu(ApplicationVisibility& visibility, TextEditing& textEditing, Actions actions)
    : visibility_(visibility), textEditing_(textEditing), actions_(std::move(actions)),
      menus_{applicationMenu(static_cast<bool>(actions_.checkForUpdates)), editMenu(), windowMenu()} {}

bool MainMenu::isEnabled(MenuAction action) const {
    switch (action) {
    case MenuAction::none:
        return false;
    case MenuAction::checkForUpdates:
        return static_cast<bool>(actions_.checkForUpdates);
    case MenuAction::hide:
    case MenuAction::hideOthers:
    case MenuAction::showAll:
        return visibility_.isAvailable();
    case MenuAction::undo:
    case MenuAction::redo:
    case MenuAction::cut:
    case MenuAction::copy:
    case MenuAction::paste:
    case MenuAction::selectAll:
        return textEditing_.canPerform(action);
    case MenuAction::quit:
    case MenuAction::closeWindow:
    case MenuAction::minimize:
        return true;
    }
    return false;
}

void MainMenu::perform(MenuAction action) const {
    if (!isEnabled(action)) {
        return;
    }
    switch (action) {
    case MenuAction::none:
        break;
    case MenuAction::checkForUpdates:
        actions_.checkForUpdates();
        break;
    case MenuAction::hide:
        visibility_.hide();
        break;
    case MenuAction::hideOthers:
        visibility_.hideOthers();
        break;
    case MenuAction::showAll:
        visibility_.showAll();
        break;
    case MenuAction::quit:
        actions_.quit();
        break;
    case MenuAction::undo:
    case MenuAction::redo:
    case MenuAction::cut:
    case MenuAction::copy:
    case MenuAction::paste:
    case MenuAction::selectAll:
        textEditing_.perform(action);
        break;
    case MenuAction::closeWindow:
        actions_.closeWindow();
        break;
    case MenuAction::minimize:
        actions_.minimizeWindow();
        break;
    }
}

} // namespace tavro
