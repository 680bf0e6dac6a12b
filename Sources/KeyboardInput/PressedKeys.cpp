#include "KeyboardInput/PressedKeys.h"

namespace tavro {

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

bool PressedKeys::startsPress(std::int64_t keyCode, std::uint32_t time) const {
    const std::scoped_lock lock(mutex_);
    const auto found = entries_.find(keyCode);
    const bool isDown = found != entries_.end();
    if (time == 0 || (isDown && found->second.time == 0)) {
        return !isDown;
    }
    const auto times = times_.find(keyCode);
    const auto known = times != times_.end() ? times->second : KeyTimes();
    if (isDown && !KeyTimes::isLater(found->second.time, time) &&
        !known.wentUpBetween(found->second.time, time)) {
        return false;
    }
    return known.startsPress(time);
}

PressedKeys::Pressed PressedKeys::press(const Press& press) {
    const std::scoped_lock lock(mutex_);
    Pressed pressed;
    pressed.serial = ++lastSerial_;
    const auto found = entries_.find(press.keyCode);
    if (press.road == Road::window && press.time != 0) {
        auto& times = times_[press.keyCode];
        times.addPress(press.time);
        pressed.isOver = times.isOver(press.time) || (found != entries_.end() && found->second.time != 0 &&
                                                      KeyTimes::isLater(found->second.time, press.time));
    }
    if (pressed.isOver) {
        endedElsewhere_.insert(press.keyCode);
        return pressed;
    }
    if (found != entries_.end()) {
        pressed.ended = found->second.character;
    }
    endedElsewhere_.erase(press.keyCode);
    entries_.insert_or_assign(press.keyCode, Entry{.serial = lastSerial_,
                                                   .road = press.road,
                                                   .character = press.character,
                                                   .time = press.time,
                                                   .isPlayed = press.road == Road::window});
    return pressed;
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
    addRelease(keyCode, time);
    const auto found = entries_.find(keyCode);
    if (found != entries_.end() && isReleaseOf(found->second, seenBy, time)) {
        return end(found, seenBy);
    }
    const bool wasEnded = seenBy == Witness::window && endedElsewhere_.erase(keyCode) > 0;
    const bool isUnfinished = seenBy != Witness::tap && unfinished_.contains(keyCode);
    return {.isKnown = wasEnded || isUnfinished || found != entries_.end(),
            .character = isUnfinished ? finishLocked(keyCode) : std::nullopt};
}

bool PressedKeys::releaseLater(std::int64_t keyCode, std::uint32_t time) {
    const std::scoped_lock lock(mutex_);
    addRelease(keyCode, time);
    const auto found = entries_.find(keyCode);
    if (found == entries_.end() || found->second.road != Road::window ||
        !isReleaseOf(found->second, Witness::tap, time)) {
        return false;
    }
    unfinished_.insert_or_assign(keyCode, end(found, Witness::tap).character);
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
    const bool hasClock = time != 0 && entry.time != 0;
    if ((entry.road == Road::tap) == (seenBy == Witness::tap)) {
        // A window's own events may take longer than what the window system tells besides.
        return seenBy != Witness::window || !hasClock || !KeyTimes::isLater(entry.time, time);
    }
    return entry.isPlayed && (!hasClock || KeyTimes::isLater(time, entry.time));
}

PressedKeys::Release PressedKeys::end(std::map<std::int64_t, Entry>::iterator entry, Witness seenBy) {
    const Release release{.isKnown = true, .character = entry->second.character};
    if (seenBy != Witness::window && entry->second.road == Road::window) {
        endedElsewhere_.insert(entry->first);
    }
    // Known by the order of what is told, even if the clock says less.
    if (!times_[entry->first].isOver(entry->second.time)) {
        addRelease(entry->first, entry->second.time);
    }
    entries_.erase(entry);
    return release;
}

void PressedKeys::releaseAhead(std::int64_t keyCode, std::uint32_t time) {
    const std::scoped_lock lock(mutex_);
    addRelease(keyCode, time);
}

void PressedKeys::addRelease(std::int64_t keyCode, std::uint32_t time) {
    if (time != 0) {
        times_[keyCode].addRelease(time);
    }
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
        times_.clear();
        unfinished_.clear();
    }
}

} // namespace tavro
