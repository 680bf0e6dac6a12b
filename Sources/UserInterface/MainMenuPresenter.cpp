#include "UserInterface/MainMenuPresenter.h"

#include <QGuiApplication>
#include <QKeySequence>

namespace tavro {

namespace {

/// Command's place is Control's, as everywhere in Qt.
QKeySequence sequenceOf(const MenuItem& item) {
    if (item.key == 0) {
        return {};
    }
    auto keys = QStringLiteral("Ctrl+");
    if (item.needsOption) {
        keys += QStringLiteral("Alt+");
    }
    if (item.needsShift) {
        keys += QStringLiteral("Shift+");
    }
    return {keys + QChar(item.key).toUpper()};
}

QVariantMap menuEntry(const QString& kind, const QString& text = {}, const QKeySequence& sequence = {},
                      MenuAction action = MenuAction::none, bool isEnabled = false) {
    return {{QStringLiteral("kind"), kind},
            {QStringLiteral("text"), text},
            {QStringLiteral("shortcut"), sequence.toString(QKeySequence::NativeText)},
            {QStringLiteral("action"), static_cast<int>(action)},
            {QStringLiteral("isEnabled"), isEnabled}};
}

QVariantList entriesOf(const MainMenu& menu) {
    QVariantList entries;
    for (const auto& part : menu.menus()) {
        entries.append(menuEntry(QStringLiteral("heading"), part.title));
        for (const auto& item : part.items) {
            entries.append(item.isSeparator()
                               ? menuEntry(QStringLiteral("separator"))
                               : menuEntry(QStringLiteral("item"), item.title, sequenceOf(item), item.action,
                                           menu.isEnabled(item.action)));
        }
    }
    return entries;
}

/// Apart from the entries, which change: who listens to the keys need not.
QVariantList shortcutsOf(const MainMenu& menu) {
    QVariantList shortcuts;
    int index = 0;
    for (const auto& part : menu.menus()) {
        ++index; // The heading.
        for (const auto& item : part.items) {
            if (const auto sequence = sequenceOf(item); !sequence.isEmpty()) {
                shortcuts.append(
                    QVariantMap{{QStringLiteral("sequence"), sequence.toString(QKeySequence::PortableText)},
                                {QStringLiteral("action"), static_cast<int>(item.action)},
                                {QStringLiteral("index"), index}});
            }
            ++index;
        }
    }
    return shortcuts;
}

} // namespace

MainMenuPresenter::MainMenuPresenter(const MainMenu& menu, bool isInWindow)
    : menu_(menu), isInWindow_(isInWindow), entries_(entriesOf(menu)), shortcuts_(shortcutsOf(menu)) {
    connect(qGuiApp, &QGuiApplication::focusObjectChanged, this, &MainMenuPresenter::refresh);
}

bool MainMenuPresenter::isEditingText() const {
    return menu_.isEnabled(MenuAction::selectAll);
}

void MainMenuPresenter::perform(int action) {
    menu_.perform(static_cast<MenuAction>(action));
}

void MainMenuPresenter::refresh() {
    auto entries = entriesOf(menu_);
    if (entries_ != entries) {
        entries_ = std::move(entries);
        Q_EMIT entriesChanged();
    }
}

} // namespace tavro
