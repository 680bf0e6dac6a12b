#include "Updates/Manifest/InternetDate.h"

#include <algorithm>

namespace tavro {

namespace {

constexpr std::string_view datePattern = "0000-00-00T00:00:00";
constexpr std::string_view zonePattern = "+00:00";

/// Digits where the pattern has "0", and everything else as it stands there.
bool looksLike(std::string_view pattern, std::string_view text) {
    return std::ranges::equal(pattern, text, [](char expected, char found) {
        return expected == '0' ? found >= '0' && found <= '9' : expected == found;
    });
}

int number(std::string_view text, std::size_t place, std::size_t digits) {
    int value = 0;
    for (const char digit : text.substr(place, digits)) {
        value = value * 10 + (digit - '0');
    }
    return value;
}

/// How far the zone's clock is ahead.
std::optional<std::chrono::minutes> zoneOffset(std::string_view text) {
    if (text == "Z") {
        return std::chrono::minutes(0);
    }
    const bool isBehind = text.starts_with('-');
    if (!looksLike(zonePattern.substr(1), text.substr(text.empty() ? 0 : 1)) ||
        (!isBehind && !text.starts_with('+'))) {
        return std::nullopt;
    }
    const auto hours = number(text, 1, 2);
    const auto minutes = number(text, 4, 2);
    if (hours > 23 || minutes > 59) {
        return std::nullopt;
    }
    const auto offset = std::chrono::hours(hours) + std::chrono::minutes(minutes);
    return isBehind ? -offset : offset;
}

} // namespace

std::optional<std::chrono::sys_seconds> InternetDate::parse(std::string_view text) {
    const auto local = text.substr(0, datePattern.size());
    if (!looksLike(datePattern, local)) {
        return std::nullopt;
    }
    const std::chrono::year_month_day date{std::chrono::year(number(local, 0, 4)),
                                           std::chrono::month(static_cast<unsigned>(number(local, 5, 2))),
                                           std::chrono::day(static_cast<unsigned>(number(local, 8, 2)))};
    const auto hour = number(local, 11, 2);
    const auto minute = number(local, 14, 2);
    const auto second = number(local, 17, 2);
    const auto offset = zoneOffset(text.substr(datePattern.size()));
    if (!date.ok() || hour > 23 || minute > 59 || second > 59 || !offset) {
        return std::nullopt;
    }
    return std::chrono::sys_days(date) + std::chrono::hours(hour) + std::chrono::minutes(minute) +
           std::chrono::seconds(second) - *offset;
}

} // namespace tavro
