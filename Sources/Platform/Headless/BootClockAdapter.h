#pragma once

#include "PlatformInterfaces/BootClock.h"

namespace tavro::headless {

/// A boot that tells what its fields say.
class BootClockAdapter final : public BootClock {
public:
    std::optional<std::string> answersIdentifier = "headless";
    double answersSecondsSince1970 = 0;
    double answersSecondsUp = 0;

    [[nodiscard]] std::optional<std::string> identifier() const override { return answersIdentifier; }

    [[nodiscard]] double secondsSince1970() const override { return answersSecondsSince1970; }

    [[nodiscard]] double secondsUp() const override { return answersSecondsUp; }
};

} // namespace tavro::headless
