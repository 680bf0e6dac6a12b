#pragma once

#include "PlatformInterfaces/Guard.h"

#include <string>
#include <utility>
#include <vector>

namespace tavro::headless {

/// Records what it is entrusted with, and claims whatever deeds it is given. Where nobody guards, it does
/// nothing.
class GuardAdapter final : public Guard {
public:
    void entrustReceivers(std::vector<std::string> entrusted) override { receivers = std::move(entrusted); }

    void withholdFarewell() override { saysFarewell = false; }

    void expectBeats(bool expects) override { expectsBeats = expects; }

    [[nodiscard]] Deeds beat() override {
        ++beats;
        return std::exchange(deeds, {});
    }

    std::vector<std::string> receivers;
    bool saysFarewell = true;
    bool expectsBeats = false;
    int beats = 0;
    /// What the next beat returns.
    Deeds deeds;
};

} // namespace tavro::headless
