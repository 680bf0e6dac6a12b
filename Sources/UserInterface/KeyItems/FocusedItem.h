#pragma once

class QQuickItem;
class QQuickWindow;

namespace tavro {

/// What the item that has the keyboard in a window means for keys that are not meant for it in particular.
struct FocusedItem {
    /// It belongs to something that is open over the window's content, which has all keys.
    bool liesInPopup = false;
    /// It takes text.
    bool isEditingText = false;

    /// Null is a window without one.
    [[nodiscard]] static FocusedItem of(const QQuickWindow* window);

    /// Whether an item takes text; null does not.
    [[nodiscard]] static bool takesText(const QQuickItem* item);
};

} // namespace tavro
