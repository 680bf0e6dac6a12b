#pragma once

#include "Player/Pacer.h"

namespace tavro {

/// Lets every time pass at once.
class VirtualPacer final : public Pacer {
public:
    [[nodiscard]] bool waitUntil(std::chrono::nanoseconds /*time*/) override { return !isInterrupted_; }

    void interrupt() override { isInterrupted_ = true; }

private:
    bool isInterrupted_ = false;
};

} // namespace tavro
