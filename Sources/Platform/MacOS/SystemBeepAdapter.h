#pragma once

#include "PlatformInterfaces/SystemBeep.h"

namespace tavro::macos {

/// The alert sound that the user has chosen in the system's settings.
class SystemBeepAdapter final : public SystemBeep {
public:
    void beep() override;
};

} // namespace tavro::macos
