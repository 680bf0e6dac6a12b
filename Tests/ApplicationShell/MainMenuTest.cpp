#include "ApplicationShell/MainMenu.h"

#include "Platform/Headless/ApplicationVisibilityAdapter.h"
#include "Platform/Headless/MenuBarAdapter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A field that may be there, and that writes down what is done to it.
class RecordingTextEditing final : public TextEditing {
public:
    bool isThere = false;
    std::vector<MenuAction> performed;

    [[nodiscard]] bool canPerform(MenuAction) const override { return isThere; }

    void perform(MenuAction action) override { performed.push_back(action); }
};

/// As the line reads: "Hide Others|Option+h".
std::vector<std::string> linesOf(const Menu& menu) {
    std::vector<std::string> lines;
    for (const auto& item : menu.items) {
        auto line = item.isSeparator() ? std::string("---") : item.title.toStdString();
        if (item.key != 0) {
            line += "|" + std::string(item.needsOption ? "Option+" : "") + (item.needsShift ? "Shift+" : "") +
                    QString(QChar(item.key)).toStdString();
        }
        lines.push_back(line);
    }
    return lines;
}

class MainMenuTest : public testing::Test {
protected:
    MainMenu::Actions actions() {
        const auto note = [this](const char* what) { return [this, what] { calls_.emplace_back(what); }; };
        return {.checkForUpdates = {},
                .quit = note("quit"),
                .closeWindow = note("close window"),
                .minimizeWindow = note("minimize window")};
    }

    std::vector<std::string> calls_;
    headless::ApplicationVisibilityAdapter visibility_;
    RecordingTextEditing textEditing_;
    MainMenu menu_{visibility_, textEditing_, actions()};
};

TEST_F(MainMenuTest, hasThreeMenus) {
    ASSERT_EQ(menu_.menus().size(), 3u);
    EXPECT_EQ(menu_.menus()[0].title, QStringLiteral("TAVRO"));
    EXPECT_EQ(menu_.menus()[1].title, QStringLiteral("Edit"));
    EXPECT_EQ(menu_.menus()[2].title, QStringLiteral("Window"));
    EXPECT_THAT(linesOf(menu_.menus()[0]),
                ElementsAre("Hide TAVRO|h", "Hide Others|Option+h", "Show All", "---", "Quit TAVRO|q"));
    EXPECT_THAT(linesOf(menu_.menus()[1]),
                ElementsAre("Undo|z", "Redo|Shift+z", "---", "Cut|x", "Copy|c", "Paste|v", "Select All|a"));
    EXPECT_THAT(linesOf(menu_.menus()[2]), ElementsAre("Close Window|w", "Minimize|m"));
}

TEST_F(MainMenuTest, offersUpdatesWhereThereAreSome) {
    auto withUpdates = actions();
    withUpdates.checkForUpdates = [this] { calls_.emplace_back("updates"); };
    const MainMenu menu(visibility_, textEditing_, withUpdates);
    EXPECT_THAT(linesOf(menu.menus()[0]),
                ElementsAre("Check for Updates...", "---", "Hide TAVRO|h", "Hide Others|Option+h", "Show All",
                            "---", "Quit TAVRO|q"));
    EXPECT_TRUE(menu.isEnabled(MenuAction::checkForUpdates));
    menu.perform(MenuAction::checkForUpdates);
    EXPECT_THAT(calls_, ElementsAre("updates"));
    EXPECT_FALSE(menu_.isEnabled(MenuAction::checkForUpdates));
    menu_.perform(MenuAction::checkForUpdates);
    EXPECT_THAT(calls_, ElementsAre("updates"));
}

TEST_F(MainMenuTest, noTwoItemsHaveTheSameKeysOrTheSameAction) {
    std::set<std::pair<char16_t, std::pair<bool, bool>>> keys;
    std::set<MenuAction> actions;
    for (const auto& part : menu_.menus()) {
        for (const auto& item : part.items) {
            if (item.key != 0) {
                EXPECT_TRUE(keys.insert({item.key, {item.needsOption, item.needsShift}}).second)
                    << item.title.toStdString();
            }
            if (!item.isSeparator()) {
                EXPECT_TRUE(actions.insert(item.action).second) << item.title.toStdString();
            }
        }
    }
    EXPECT_EQ(actions.size(), 12u);
}

TEST_F(MainMenuTest, actsOnTheProgramAndItsWindows) {
    menu_.perform(MenuAction::quit);
    menu_.perform(MenuAction::closeWindow);
    menu_.perform(MenuAction::minimize);
    menu_.perform(MenuAction::none);
    EXPECT_THAT(calls_, ElementsAre("quit", "close window", "minimize window"));
}

TEST_F(MainMenuTest, hidesAndShowsWhereThatIsPossible) {
    const auto all = {MenuAction::hide, MenuAction::hideOthers, MenuAction::showAll};
    for (const auto action : all) {
        EXPECT_FALSE(menu_.isEnabled(action));
        menu_.perform(action);
    }
    EXPECT_THAT(visibility_.calls, IsEmpty());
    visibility_.isPossible = true;
    for (const auto action : all) {
        EXPECT_TRUE(menu_.isEnabled(action));
        menu_.perform(action);
    }
    EXPECT_THAT(visibility_.calls, ElementsAre("hide", "hide others", "show all"));
}

TEST_F(MainMenuTest, editsTheFieldThatIsThere) {
    const auto all = {MenuAction::undo, MenuAction::redo,  MenuAction::cut,
                      MenuAction::copy, MenuAction::paste, MenuAction::selectAll};
    for (const auto action : all) {
        EXPECT_FALSE(menu_.isEnabled(action));
        menu_.perform(action);
    }
    EXPECT_THAT(textEditing_.performed, IsEmpty());
    textEditing_.isThere = true;
    for (const auto action : all) {
        EXPECT_TRUE(menu_.isEnabled(action));
        menu_.perform(action);
    }
    EXPECT_EQ(textEditing_.performed, std::vector<MenuAction>(all));
}

TEST_F(MainMenuTest, isShownByTheWindowWhereTheSystemHasNoPlace) {
    headless::MenuBarAdapter bar;
    EXPECT_FALSE(bar.isThere());
    bar.install(menu_);
    EXPECT_EQ(bar.installed, &menu_);
}

} // namespace
} // namespace tavro
