#pragma once

#include "PlatformInterfaces/SystemBeep.h"

namespace tavro::headless {

/// Makes no sound, and counts how often it should have.
class SystemBeepAdapter final : public SystemBeep {
public:
    int beeps = 0;

    void beep() override { ++beeps; }
};

} // namespace tavro::headless
