#pragma once

#include "ApplicationShell/MainMenu.h"

#include <QObject>
#include <QString>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace tavro {

/// The main menu for the scene, as one list. Main thread only.
class MainMenuPresenter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    /// Entries of "kind" ("heading", "item" or "separator"), "text", "shortcut" (as it is shown), "action"
    /// (for `perform`) and "isEnabled". Those without a meaning for the kind are empty.
    Q_PROPERTY(QVariantList entries READ entries NOTIFY entriesChanged)
    /// "sequence", "action" and the "index" of the entry, for each that has a shortcut.
    Q_PROPERTY(QVariantList shortcuts READ shortcuts CONSTANT)
    /// Whether the window shows the menu; the system does otherwise, and then handles the shortcuts too.
    Q_PROPERTY(bool isInWindow READ isInWindow CONSTANT)
    /// Whether somebody is typing into a field, which then must keep the keyboard.
    Q_PROPERTY(bool isEditingText READ isEditingText NOTIFY entriesChanged)

public:
    /// The menu must outlive this.
    MainMenuPresenter(const MainMenu& menu, bool isInWindow);

    [[nodiscard]] const QVariantList& entries() const { return entries_; }

    [[nodiscard]] const QVariantList& shortcuts() const { return shortcuts_; }

    [[nodiscard]] bool isInWindow() const { return isInWindow_; }

    [[nodiscard]] bool isEditingText() const;

    /// Does what the entry with this action stands for, if that can be done now.
    Q_INVOKABLE void perform(int action);

    /// Looks again which entries can be used. By itself it does so when the keyboard goes to another item.
    Q_INVOKABLE void refresh();

Q_SIGNALS:
    void entriesChanged();

private:
    const MainMenu& menu_;
    bool isInWindow_;
    QVariantList entries_;
    QVariantList shortcuts_;
};

} // namespace tavro
