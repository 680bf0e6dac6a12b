#pragma once

#include <cstddef>
#include <cstdint>

namespace tavro::jack {

/// Where the messages of one period go. What implements it is called in the server's thread.
class PeriodTarget {
public:
    /// Ports are counted from 0.
    static constexpr std::size_t portCount = 2;

    PeriodTarget() = default;
    PeriodTarget(const PeriodTarget&) = delete;
    PeriodTarget& operator=(const PeriodTarget&) = delete;
    virtual ~PeriodTarget() = default;

    [[nodiscard]] virtual bool hasPort(std::uint16_t port) const = 0;

    /// The place for the bytes of one message at this frame of the period, no earlier than the one before it;
    /// null when the port takes no more in this period.
    [[nodiscard]] virtual std::uint8_t* reserve(std::uint16_t port, std::uint32_t offset,
                                                std::size_t size) = 0;
};

} // namespace tavro::jack
