#pragma once

#include "PlatformInterfaces/Application/Menu.h"

namespace tavro {

/// The text field that has the keyboard, if any has. Main thread only.
class TextEditing {
public:
    TextEditing() = default;
    TextEditing(const TextEditing&) = delete;
    TextEditing& operator=(const TextEditing&) = delete;
    virtual ~TextEditing() = default;

    /// Whether a field is there that the action, one of the Edit menu, can work on.
    [[nodiscard]] virtual bool canPerform(MenuAction action) const = 0;

    /// Does nothing when it cannot.
    virtual void perform(MenuAction action) = 0;
};

} // namespace tavro
