#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

namespace tavro {

/// The handle of work that waits. The work is cancelled when its handle is destroyed or assigned over, also
/// from inside the work itself, which then still runs to its end.
class ScheduledTask {
public:
    ScheduledTask() = default;

    /// The actor runs the work only while somebody still holds `life`.
    explicit ScheduledTask(std::shared_ptr<void> life) : life_(std::move(life)) {}

    ScheduledTask(ScheduledTask&&) = default;
    ScheduledTask& operator=(ScheduledTask&&) = default;
    ScheduledTask(const ScheduledTask&) = delete;
    ScheduledTask& operator=(const ScheduledTask&) = delete;
    ~ScheduledTask() = default;

    void cancel() { life_.reset(); }

private:
    std::shared_ptr<void> life_;
};

/// The main thread as a place to run work on, and its clock. All rules of the program run there.
class MainActor {
public:
    using Action = std::function<void()>;

    MainActor() = default;
    MainActor(const MainActor&) = delete;
    MainActor& operator=(const MainActor&) = delete;
    virtual ~MainActor() = default;

    /// Runs the action on the main thread, in the order of posting and never inside this call. May be
    /// called from any thread.
    virtual void post(Action action) = 0;

    /// Runs the action on the main thread when the delay is over, never inside this call; a delay of zero or
    /// less means as soon as possible. Main thread only.
    [[nodiscard]] virtual ScheduledTask after(std::chrono::nanoseconds delay, Action action) = 0;

    /// Time since a fixed moment; never goes backwards. Main thread only.
    [[nodiscard]] virtual std::chrono::nanoseconds now() const = 0;
};

} // namespace tavro
