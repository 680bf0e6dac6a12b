#include "ApplicationShell/MainMenu.h"

#include <QCoreApplication>

#include <utility>

namespace tavro {

namespace {

QString translated(const char* text) {
    return QCoreApplication::translate("MainMenu", text);
}

Menu applicationMenu(bool offersUpdates) {
    Menu menu{.title = translated("TAVRO"), .items = {}};
    if (offersUpdates) {
        menu.items = {{.action = MenuAction::checkForUpdates, .title = translated("Check for Updates...")},
                      {}};
    }
    menu.items.insert(menu.items.end(),
                      {{.action = MenuAction::hide, .title = translated("Hide TAVRO"), .key = u'h'},
                       {.action = MenuAction::hideOthers,
                        .title = translated("Hide Others"),
                        .key = u'h',
                        .needsOption = true},
                       {.action = MenuAction::showAll, .title = translated("Show All")},
                       {},
                       {.action = MenuAction::quit, .title = translated("Quit TAVRO"), .key = u'q'}});
    return menu;
}

Menu editMenu() {
    return {
        .title = translated("Edit"),
        .items = {{.action = MenuAction::undo, .title = translated("Undo"), .key = u'z'},
                  {.action = MenuAction::redo, .title = translated("Redo"), .key = u'z', .needsShift = true},
                  {},
                  {.action = MenuAction::cut, .title = translated("Cut"), .key = u'x'},
                  {.action = MenuAction::copy, .title = translated("Copy"), .key = u'c'},
                  {.action = MenuAction::paste, .title = translated("Paste"), .key = u'v'},
                  {.action = MenuAction::selectAll, .title = translated("Select All"), .key = u'a'}}};
}

Menu windowMenu() {
    return {.title = translated("Window"),
            .items = {{.action = MenuAction::closeWindow, .title = translated("Close Window"), .key = u'w'},
                      {.action = MenuAction::minimize, .title = translated("Minimize"), .key = u'm'}}};
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
