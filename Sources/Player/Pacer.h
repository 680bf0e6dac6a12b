#pragma once

#include <chrono>

namespace tavro {

/// Brings the time of a script and the time of the world together. Main thread only.
class Pacer {
public:
    Pacer() = default;
    Pacer(const Pacer&) = delete;
    Pacer& operator=(const Pacer&) = delete;
    virtual ~Pacer() = default;

    /// Returns once this time from the start may pass for reached; the first call is the start. False when
    /// waiting was broken off, and the script with it.
    [[nodiscard]] virtual bool waitUntil(std::chrono::nanoseconds time) = 0;

    /// Breaks the waiting off, now and from now on.
    virtual void interrupt() = 0;
};

/// Lets every time pass at once.
class VirtualPacer final : public Pacer {
public:
    [[nodiscard]] bool waitUntil(std::chrono::nanoseconds /*time*/) override { return !isInterrupted_; }

    void interrupt() override { isInterrupted_ = true; }

private:
    bool isInterrupted_ = false;
};

} // namespace tavro
