#pragma once

#include <chrono>
#include <optional>
#include <string_view>

namespace tavro {

/// Dates as ISO 8601 writes them on the internet.
class InternetDate {
public:
    InternetDate() = delete;

    /// A date and a time with its zone, such as "2025-03-01T09:30:00Z" or "2025-03-01T10:30:00+01:00".
    /// Nothing for everything else: fractions of a second, a missing zone, a day that no calendar has.
    [[nodiscard]] static std::optional<std::chrono::sys_seconds> parse(std::string_view text);
};

} // namespace tavro
