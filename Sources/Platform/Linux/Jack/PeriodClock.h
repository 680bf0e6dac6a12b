#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <optional>

namespace tavro::jack {

/// Whether a stamp comes before another that lies less than half the counter away.
[[nodiscard]] constexpr bool isBefore(std::uint32_t stamp, std::uint32_t other) {
    return static_cast<std::int32_t>(stamp - other) < 0;
}

/// Where in the period that begins at `periodStart` an event belongs that was handed over at `stamp`: one
/// period after it, so that every event is late by the same time. A stamp that would fall outside the
/// period is moved to its nearest frame, and no event comes before `earliest`, the offset of the one before
/// it. Stamps count frames and wrap around; `frames` is the length of the period, at least 1.
[[nodiscard]] constexpr std::uint32_t offsetOnePeriodLater(std::uint32_t stamp, std::uint32_t periodStart,
                                                           std::uint32_t frames, std::uint32_t earliest) {
    // The difference of two counters that wrap is small and has a sign once it is read as signed.
    const auto sinceStart = static_cast<std::int32_t>(stamp - periodStart);
    const auto wanted = std::int64_t{sinceStart} + frames;
    const auto last = std::int64_t{frames} - 1;
    return static_cast<std::uint32_t>(
        std::clamp(std::max(wanted, std::int64_t{earliest}), std::int64_t{0}, last));
}

/// How many frames a delay is, to the nearest; one that is negative is none. Nothing when it is so long that
/// the stamp at its end could not be told from one that is past.
[[nodiscard]] constexpr std::optional<std::uint32_t> framesIn(std::chrono::nanoseconds delay,
                                                              std::uint32_t rate) {
    constexpr std::int64_t billion = 1'000'000'000;
    constexpr std::int64_t longest = std::int64_t{1} << 30U;
    const auto wanted = std::max(delay, std::chrono::nanoseconds(0)).count();
    const auto seconds = wanted / billion;
    if (seconds > longest / std::max(rate, 1U)) {
        return std::nullopt;
    }
    const auto frames = seconds * rate + (wanted % billion * rate + billion / 2) / billion;
    return frames > longest ? std::nullopt : std::optional(static_cast<std::uint32_t>(frames));
}

} // namespace tavro::jack
