#include "Player/LivePacer.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <thread>

namespace tavro {

LivePacer::LivePacer() {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, &loop_, &QEventLoop::quit);
}

bool LivePacer::waitUntil(std::chrono::nanoseconds time) {
    if (!start_) {
        start_ = Clock::now();
    }
    // Also when it is late already: a script that never waits must not shut out everything else.
    QCoreApplication::processEvents();
    while (!isInterrupted_) {
        const auto end = *start_ + time;
        const auto left = std::chrono::floor<std::chrono::milliseconds>(end - Clock::now()).count();
        if (left < 1) {
            // A timer counts whole milliseconds; the rest is too short to be missed by anybody.
            std::this_thread::sleep_until(end);
            return true;
        }
        timer_.start(static_cast<int>(std::min<std::int64_t>(left, std::numeric_limits<int>::max())));
        loop_.exec();
    }
    return false;
}

void LivePacer::postpone(std::chrono::nanoseconds time) {
    if (start_) {
        *start_ += time;
        loop_.quit();
    }
}

void LivePacer::interrupt() {
    isInterrupted_ = true;
    loop_.quit();
}

} // namespace tavro
