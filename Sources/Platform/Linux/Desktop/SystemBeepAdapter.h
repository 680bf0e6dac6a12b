#pragma once

#include "PlatformInterfaces/SystemBeep.h"

namespace tavro::linuxos {

/// The X server's bell, which the desktop may replace by a sound of its own. Elsewhere the bell of the
/// terminal that the program was started from, and without a terminal nothing: Wayland has no such request.
class SystemBeepAdapter final : public SystemBeep {
public:
    /// The application must be running.
    void beep() override;
};

} // namespace tavro::linuxos
