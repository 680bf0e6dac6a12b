#include "UserInterface/FocusedTextField.h"

#include "UserInterface/KeyItems/FocusedItem.h"

#include <QGuiApplication>
#include <QMetaObject>
#include <QQuickItem>

namespace tavro {

namespace {

/// The operation's name at every item that edits text; null for other actions.
const char* operationOf(MenuAction action) {
    switch (action) {
    case MenuAction::undo:
        return "undo";
    case MenuAction::redo:
        return "redo";
    case MenuAction::cut:
        return "cut";
    case MenuAction::copy:
        return "copy";
    case MenuAction::paste:
        return "paste";
    case MenuAction::selectAll:
        return "selectAll";
    default:
        return nullptr;
    }
}

} // namespace

QQuickItem* FocusedTextField::field() {
    auto* item = qobject_cast<QQuickItem*>(QGuiApplication::focusObject());
    return FocusedItem::takesText(item) ? item : nullptr;
}

bool FocusedTextField::canPerform(MenuAction action) const {
    return operationOf(action) != nullptr && field() != nullptr;
}

void FocusedTextField::perform(MenuAction action) {
    if (canPerform(action)) {
        QMetaObject::invokeMethod(field(), operationOf(action));
    }
}

} // namespace tavro
