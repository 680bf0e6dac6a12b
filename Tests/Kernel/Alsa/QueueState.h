#pragma once

#include <string>

namespace tavro::proof {

/// The program's queue, as the kernel shows it.
struct QueueState {
    bool isRunning;
    /// Whether it has the timer tick that it runs on.
    bool isTicking;
    int waiting;

    /// Throws when there is not exactly one.
    static QueueState read();
};

/// Throws unless the queue is stopped, its timer too, and nothing waits in it.
void expectRest(const std::string& when);

} // namespace tavro::proof
