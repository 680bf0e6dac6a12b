#pragma once

#include <cstdint>
#include <limits>

namespace tavro::evdev {

/// When a device was last grabbed, in microseconds of the kernel's monotonic clock. Events wait in a queue,
/// so that what is read after the grab may have reached everybody before it.
class GrabSpan {
public:
    /// The grab holds since a time before this one.
    void begin(std::int64_t now) {
        from_ = now;
        until_ = std::numeric_limits<std::int64_t>::max();
    }

    /// The grab ends at a time after this one.
    void end(std::int64_t now) { until_ = now; }

    [[nodiscard]] bool isOpen() const { return until_ == std::numeric_limits<std::int64_t>::max(); }

    /// Whether an event of this time came to the grabber alone.
    [[nodiscard]] bool contains(std::int64_t time) const { return time >= from_ && time < until_; }

private:
    std::int64_t from_ = 0;
    std::int64_t until_ = 0;
};

} // namespace tavro::evdev
