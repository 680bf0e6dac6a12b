#pragma once

#include <optional>
#include <string>

namespace tavro {

/// Tells one boot of the machine from another.
class BootClock {
public:
    BootClock() = default;
    BootClock(const BootClock&) = delete;
    BootClock& operator=(const BootClock&) = delete;
    virtual ~BootClock() = default;

    /// The system's own word for the running boot: the same until the next one. Nothing when the system does
    /// not tell.
    [[nodiscard]] virtual std::optional<std::string> identifier() const = 0;

    [[nodiscard]] virtual double secondsSince1970() const = 0;

    /// How long the system has been up.
    [[nodiscard]] virtual double secondsUp() const = 0;
};

} // namespace tavro
