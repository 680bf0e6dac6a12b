#include "UserInterface/WindowPanels.h"

#include "ApplicationShell/WindowFitting.h"

namespace tavro {

void WindowPanels::setAdvancedVisible(bool isVisible) {
    if (isAdvancedVisible_ != isVisible) {
        isAdvancedVisible_ = isVisible;
        Q_EMIT isAdvancedVisibleChanged();
        Q_EMIT preferredWindowHeightChanged();
    }
}

void WindowPanels::setSettingsVisible(bool isVisible) {
    if (isSettingsVisible_ != isVisible) {
        isSettingsVisible_ = isVisible;
        Q_EMIT isSettingsVisibleChanged();
        Q_EMIT preferredWindowHeightChanged();
    }
}

int WindowPanels::preferredWindowHeight() const {
    return WindowFitting::preferredHeight(isAdvancedVisible_, isSettingsVisible_);
}

} // namespace tavro
