#pragma once

#include "Concurrency/MainActor.h"

#include <chrono>

namespace tavro::bench {

/// For adapters of which nobody asks what happens around them, so that nothing that is posted needs to run.
class DeafActor final : public MainActor {
public:
    void post(Action /*action*/) override {}

    [[nodiscard]] ScheduledTask after(std::chrono::nanoseconds /*delay*/, Action /*action*/) override {
        return {};
    }

    [[nodiscard]] std::chrono::nanoseconds now() const override {
        return std::chrono::steady_clock::now().time_since_epoch();
    }
};

} // namespace tavro::bench
