#pragma once

#include "ApplicationShell/TextEditing.h"

class QQuickItem;

namespace tavro {

/// The item of the scene that has the keyboard, when text is typed into it.
class FocusedTextField final : public TextEditing {
public:
    [[nodiscard]] bool canPerform(MenuAction action) const override;
    void perform(MenuAction action) override;

private:
    [[nodiscard]] static QQuickItem* field();
};

} // namespace tavro
