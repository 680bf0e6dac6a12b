#include "KeyboardInput/PressedKeys.h"

namespace tavro {

namespace {

/// By the clock that runs over: more than half of its range between the two means that it did.
bool isLater(std::uint32_t time, std::uint32_t other) {
    return static_cast<std::int32_t>(time - other) > 0;
}

/// More than any finger has on their way at a time.
constexpr std::size_t mostReleasesAhead = 8;

} // namespace

bool PressedKeys::isDown(std::int64_t keyCode) const {
    const std::scoped_lock lock(mutex_);
    return entries_.contains(keyCode);
}

std::optional<PressedKeys::Held> PressedKeys::find(std::int64_t keyCode) const {
    const std::scoped_lock lock(mutex_);
    const auto found = entries_.find(keyCode);
    if (found == entries_.end()) {
        return std::nullopt;
    }
    return Held{.serial = found->second.serial,
                .road = found->second.road,
                .character = found->second.character,
                .time = found->second.time};
}

PressedKeys::Serial PressedKeys::press(const Press& press) {
    const std::scoped_lock lock(mutex_);
    endedElsewhere_.erase(press.keyCode);
    entries_.insert_or_assign(press.keyCode, Entry{.serial = ++lastSerial_,
                                                   .road = press.road,
                                                   .character = press.character,
                                                   .time = press.time,
                                                   .isPlayed = press.road == Road::window});
    return lastSerial_;
}

void PressedKeys::markPlayed(std::int64_t keyCode, Serial serial) {
    const std::scoped_lock lock(mutex_);
    const auto found = entries_.find(keyCode);
    if (found != entries_.end() && found->second.serial == serial) {
        found->second.isPlayed = true;
    }
}

PressedKeys::Release PressedKeys::release(std::int64_t keyCode, Witness seenBy, std::uint32_t time) {
    const std::scoped_lock lock(mutex_);
    const auto found = entries_.find(keyCode);
    if (found != entries_.end() && isReleaseOf(found->second, seenBy, time)) {
        return end(found, seenBy, time);
    }
    const bool wasEnded = seenBy == Witness::window && endedElsewhere_.erase(keyCode) > 0;
    const bool isUnfinished = seenBy != Witness::tap && unfinished_.contains(keyCode);
    return {.isKnown = wasEnded || isUnfinished || found != entries_.end(),
            .character = isUnfinished ? finishLocked(keyCode) : std::nullopt};
}

bool PressedKeys::releaseLater(std::int64_t keyCode, std::uint32_t time) {
    const std::scoped_lock lock(mutex_);
    const auto found = entries_.find(keyCode);
    if (found == entries_.end() || found->second.road != Road::window ||
        !isReleaseOf(found->second, Witness::tap, time)) {
        return false;
    }
    unfinished_.insert_or_assign(keyCode, end(found, Witness::tap, time).character);
    return true;
}

bool PressedKeys::releaseByNextPress(std::int64_t keyCode, std::uint32_t time) {
    const auto held = find(keyCode);
    return held && held->time != 0 && time != 0 && releaseLater(keyCode, time);
}

std::optional<Character> PressedKeys::finish(std::int64_t keyCode) {
    const std::scoped_lock lock(mutex_);
    return finishLocked(keyCode);
}

std::optional<Character> PressedKeys::finishLocked(std::int64_t keyCode) {
    const auto found = unfinished_.find(keyCode);
    if (found == unfinished_.end()) {
        return std::nullopt;
    }
    const auto character = found->second;
    unfinished_.erase(found);
    return character;
}

bool PressedKeys::isReleaseOf(const Entry& entry, Witness seenBy, std::uint32_t time) {
    if ((entry.road == Road::tap) == (seenBy == Witness::tap)) {
        return true;
    }
    const bool mayBeOlder = time != 0 && entry.time != 0 && !isLater(time, entry.time);
    return entry.isPlayed && !mayBeOlder;
}

PressedKeys::Release PressedKeys::end(std::map<std::int64_t, Entry>::iterator entry, Witness seenBy,
                                      std::uint32_t time) {
    const Release release{.isKnown = true, .character = entry->second.character};
    if (seenBy != Witness::window) {
        if (entry->second.road == Road::window) {
            endedElsewhere_.insert(entry->first);
        }
        const auto [ended, isFirst] = endedAt_.try_emplace(entry->first, time);
        if (!isFirst && isLater(time, ended->second)) {
            ended->second = time;
        }
    }
    entries_.erase(entry);
    return release;
}

void PressedKeys::releaseAhead(std::int64_t keyCode, std::uint32_t time) {
    if (time == 0) {
        return;
    }
    const std::scoped_lock lock(mutex_);
    auto& times = releasedAhead_[keyCode];
    times.push_back(time);
    if (times.size() > mostReleasesAhead) {
        times.pop_front();
    }
}

bool PressedKeys::wasReleasedAhead(std::int64_t keyCode, std::uint32_t time) {
    const std::scoped_lock lock(mutex_);
    const auto found = releasedAhead_.find(keyCode);
    if (found == releasedAhead_.end() || time == 0) {
        return false;
    }
    auto& times = found->second;
    // The presses of those went elsewhere.
    while (!times.empty() && isLater(time, times.front())) {
        times.pop_front();
    }
    if (times.empty()) {
        releasedAhead_.erase(found);
        return false;
    }
    endedAt_[keyCode] = times.front();
    times.pop_front();
    return true;
}

bool PressedKeys::isOver(std::int64_t keyCode, std::uint32_t time) const {
    const std::scoped_lock lock(mutex_);
    const auto found = endedAt_.find(keyCode);
    return found != endedAt_.end() && time != 0 && found->second != 0 && !isLater(time, found->second);
}

void PressedKeys::forget(Road road) {
    const std::scoped_lock lock(mutex_);
    forgetLocked(road);
}

void PressedKeys::setWatching(Witness witness, bool isWatching) {
    const std::scoped_lock lock(mutex_);
    if (isWatching) {
        watching_.insert(witness);
    } else {
        watching_.erase(witness);
    }
}

void PressedKeys::loseKeyboard() {
    const std::scoped_lock lock(mutex_);
    if (watching_.empty()) {
        forgetLocked(Road::window);
    }
}

void PressedKeys::forgetLocked(Road road) {
    std::erase_if(entries_, [road](const auto& entry) { return entry.second.road == road; });
    if (road == Road::window) {
        endedElsewhere_.clear();
        releasedAhead_.clear();
        endedAt_.clear();
        unfinished_.clear();
    }
}

} // namespace tavro
