#pragma once

#include "PlatformInterfaces/BootClock.h"

namespace tavro::macos {

/// The time of the boot in whole seconds since 1970, as the kernel has it.
class BootClockAdapter final : public BootClock {
public:
    [[nodiscard]] std::optional<std::string> identifier() const override;
    [[nodiscard]] double secondsSince1970() const override;
    /// Sleep does not count.
    [[nodiscard]] double secondsUp() const override;
};

} // namespace tavro::macos
