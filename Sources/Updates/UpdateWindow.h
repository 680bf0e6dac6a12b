#pragma once

#include "Updates/UpdateViewModel.h"

namespace tavro {

/// The window that offers an update. Main thread only.
class UpdateWindow {
public:
    UpdateWindow() = default;
    UpdateWindow(const UpdateWindow&) = delete;
    UpdateWindow& operator=(const UpdateWindow&) = delete;
    virtual ~UpdateWindow() = default;

    /// Makes the window for this model; once. It is shown with the next call. The model may go before the
    /// window, which then shows nothing of it.
    virtual void create(UpdateViewModel& model) = 0;

    /// Shows the window, also after it was closed, in front of all others and with the keyboard.
    virtual void bringToFront() = 0;
};

} // namespace tavro
