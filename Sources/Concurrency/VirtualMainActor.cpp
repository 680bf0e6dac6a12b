#include "Concurrency/VirtualMainActor.h"

#include <algorithm>

namespace tavro {

void VirtualMainActor::post(Action action) {
    const Key key{now_, nextOrder_++};
    auto life = std::make_shared<Action>(std::move(action));
    queue_.emplace(key, life);
    posted_.emplace(key, std::move(life));
}

ScheduledTask VirtualMainActor::after(std::chrono::nanoseconds delay, Action action) {
    // A delay past the end of the clock waits at its end.
    const auto wait =
        std::clamp(delay, std::chrono::nanoseconds::zero(), std::chrono::nanoseconds::max() - now_);
    auto life = std::make_shared<Action>(std::move(action));
    queue_.emplace(Key{now_ + wait, nextOrder_++}, life);
    return ScheduledTask(std::move(life));
}

void VirtualMainActor::runUntil(std::chrono::nanoseconds time) {
    while (!queue_.empty() && queue_.begin()->first.due <= std::max(time, now_)) {
        runFirst();
    }
    now_ = std::max(now_, time);
}

void VirtualMainActor::runToEnd() {
    while (!queue_.empty()) {
        runFirst();
    }
}

std::optional<std::chrono::nanoseconds> VirtualMainActor::nextDue() const {
    const auto next = std::ranges::find_if(queue_, [](const auto& entry) { return !entry.second.expired(); });
    return next == queue_.end() ? std::nullopt : std::optional(next->first.due);
}

void VirtualMainActor::runFirst() {
    const auto key = queue_.begin()->first;
    const auto action = queue_.begin()->second.lock();
    queue_.erase(queue_.begin());
    posted_.erase(key);
    if (action) {
        now_ = key.due;
        (*action)();
    }
}

} // namespace tavro
