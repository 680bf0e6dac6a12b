#pragma once

#include "PlatformInterfaces/BootClock.h"

#include <filesystem>

namespace tavro::linuxos {

/// The kernel's identifier of the boot, and its clocks.
class BootClockAdapter final : public BootClock {
public:
    /// The file is one that the kernel makes.
    explicit BootClockAdapter(std::filesystem::path identifierFile = "/proc/sys/kernel/random/boot_id");

    [[nodiscard]] std::optional<std::string> identifier() const override;
    [[nodiscard]] double secondsSince1970() const override;
    /// Sleep counts, so that the time of the boot does not move with it.
    [[nodiscard]] double secondsUp() const override;

private:
    std::filesystem::path identifierFile_;
};

} // namespace tavro::linuxos
