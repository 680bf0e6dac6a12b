#pragma once

#include "PlatformInterfaces/Application/WindowAspect.h"

namespace tavro::macos {

/// The window keeps the proportions itself, and only while the user resizes it.
class WindowAspectAdapter final : public WindowAspect {
public:
    void setContentAspectRatio(QWindow& window, QSize ratio, QSize size) override;
};

} // namespace tavro::macos
