#include "KeyboardInput/KeyTimes.h"

#include <algorithm>

namespace tavro {

namespace {

/// More than any finger has on their way at a time.
constexpr std::size_t mostTimes = 16;

/// An hour. A release that seems to lie further ahead is one from before the clock ran over.
constexpr std::uint32_t longestDelay = 3'600'000;

void add(std::deque<std::uint32_t>& times, std::uint32_t time) {
    if (time == 0 || std::ranges::find(times, time) != times.end()) {
        return;
    }
    times.push_back(time);
    if (times.size() > mostTimes) {
        times.erase(std::ranges::min_element(
            times, [](std::uint32_t one, std::uint32_t other) { return KeyTimes::isLater(other, one); }));
    }
}

} // namespace

void KeyTimes::addPress(std::uint32_t time) {
    add(presses_, time);
}

void KeyTimes::addRelease(std::uint32_t time) {
    add(releases_, time);
}

bool KeyTimes::startsPress(std::uint32_t time) const {
    // A repeat has no release between itself and the press that it repeats.
    return std::ranges::none_of(
        presses_, [&](std::uint32_t press) { return !isLater(press, time) && !wentUpBetween(press, time); });
}

bool KeyTimes::wentUpBetween(std::uint32_t time, std::uint32_t later) const {
    return std::ranges::any_of(
        releases_, [&](std::uint32_t release) { return !isLater(time, release) && isLater(later, release); });
}

bool KeyTimes::isOver(std::uint32_t time) const {
    return std::ranges::any_of(releases_,
                               [&](std::uint32_t release) { return release - time < longestDelay; });
}

bool KeyTimes::isLater(std::uint32_t time, std::uint32_t other) {
    return static_cast<std::int32_t>(time - other) > 0;
}

} // namespace tavro
