#pragma once

#include "Player/Pacer.h"

#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <optional>

namespace tavro {

/// Waits for the real time, in Qt's event loop, so that notices of the MIDI system and signals are worked off
/// meanwhile. What comes late does not move what comes after it.
class LivePacer final : public Pacer {
public:
    LivePacer();

    [[nodiscard]] bool waitUntil(std::chrono::nanoseconds time) override;
    void interrupt() override;

    /// Everything to come comes so much later.
    void postpone(std::chrono::nanoseconds time);

private:
    using Clock = std::chrono::steady_clock;

    QEventLoop loop_;
    QTimer timer_;
    std::optional<Clock::time_point> start_;
    bool isInterrupted_ = false;
};

} // namespace tavro
