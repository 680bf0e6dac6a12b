#pragma once

#include "Concurrency/MainActor.h"
#include "Performance/GlobalKeyboardController.h"
#include "Performance/GuardLink.h"
#include "Performance/PerformanceController.h"

#include <functional>

namespace tavro {

/// Gives the keyboard back and silences before the process is stopped, as by a terminal's Ctrl+Z, and takes
/// up again when it goes on. Main thread only.
class OrderlyStop {
public:
    struct Actions {
        /// Stops the process, and returns when it goes on.
        std::function<void()> stopNow;
        /// Tells the guard whether to wait for this program at the moment.
        std::function<void()> tellGuard;
    };

    /// All of them must outlive this.
    OrderlyStop(GlobalKeyboardController& keyboard, PerformanceController& performance, GuardLink& guardLink,
                MainActor& mainActor, Actions actions);

    /// The process stops a moment later, unless this is dropped.
    void begin();

private:
    void stop();

    GlobalKeyboardController& keyboard_;
    PerformanceController& performance_;
    GuardLink& guardLink_;
    MainActor& mainActor_;
    Actions actions_;
    ScheduledTask stopping_;
};

} // namespace tavro
