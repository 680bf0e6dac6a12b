#pragma once

#include "Concurrency/MainActor.h"

#include <cstdint>
#include <map>
#include <optional>

namespace tavro {

/// A main actor whose time stands still until it is moved by hand: for tests and for playing a script as
/// fast as the machine can. One thread only, `post` included.
class VirtualMainActor final : public MainActor {
public:
    void post(Action action) override;
    [[nodiscard]] ScheduledTask after(std::chrono::nanoseconds delay, Action action) override;

    [[nodiscard]] std::chrono::nanoseconds now() const override { return now_; }

    /// Moves the time to this moment. Work due at or before it runs on the way, each piece at its own time,
    /// in the order of due time and then of scheduling, work that the work schedules included. A moment
    /// before `now` only runs what is due now.
    void runUntil(std::chrono::nanoseconds time);

    /// Runs what is due now, without moving the time.
    void runDue() { runUntil(now_); }

    /// Runs until nothing is scheduled any more.
    void runToEnd();

    /// Whether work is waiting that was not cancelled.
    [[nodiscard]] bool hasWork() const { return nextDue().has_value(); }

    /// When the next work that was not cancelled is due; nothing when none is waiting.
    [[nodiscard]] std::optional<std::chrono::nanoseconds> nextDue() const;

private:
    struct Key {
        std::chrono::nanoseconds due;
        std::uint64_t order;

        friend auto operator<=>(const Key&, const Key&) = default;
    };

    void runFirst();

    std::chrono::nanoseconds now_{0};
    std::uint64_t nextOrder_ = 0;
    std::map<Key, std::weak_ptr<Action>> queue_;
    /// Posted work has no handle; it is kept alive here.
    std::map<Key, std::shared_ptr<Action>> posted_;
};

} // namespace tavro
