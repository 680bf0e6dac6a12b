#pragma once

#include "PlatformInterfaces/ApplicationVisibility.h"

namespace tavro::macos {

/// The system's own way of hiding applications.
class ApplicationVisibilityAdapter final : public ApplicationVisibility {
public:
    [[nodiscard]] bool isAvailable() const override;
    void hide() override;
    void hideOthers() override;
    void showAll() override;
};

} // namespace tavro::macos
