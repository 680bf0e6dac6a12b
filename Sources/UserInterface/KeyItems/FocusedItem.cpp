#include "UserInterface/KeyItems/FocusedItem.h"

#include <QQuickItem>
#include <QQuickWindow>

namespace tavro {

namespace {

bool isInOverlay(const QQuickItem* item) {
    while (item != nullptr && !item->inherits("QQuickOverlay")) {
        item = item->parentItem();
    }
    return item != nullptr;
}

} // namespace

FocusedItem FocusedItem::of(const QQuickWindow* window) {
    const QQuickItem* item = window != nullptr ? window->activeFocusItem() : nullptr;
    return {.liesInPopup = isInOverlay(item), .isEditingText = takesText(item)};
}

bool FocusedItem::takesText(const QQuickItem* item) {
    // Editable items take an input method's text; fields that can only be read do not.
    return item != nullptr && item->flags().testFlag(QQuickItem::ItemAcceptsInputMethod);
}

} // namespace tavro
