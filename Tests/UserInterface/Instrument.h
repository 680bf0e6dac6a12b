#pragma once

#include "ApplicationShell/PerformanceController.h"
#include "Concurrency/VirtualMainActor.h"
#include "MidiOutput/MidiOutputManager.h"
#include "Platform/Headless/MidiSystemAdapter.h"

#include <cstdint>
#include <vector>

namespace tavro {

/// An instrument that reaches nobody and whose time stands still. Every velocity is 100.
class Instrument {
public:
    explicit Instrument(PerformanceState initialState = {}) : controller(midi, actor, even(initialState)) {}

    /// The messages since the last call.
    std::vector<std::vector<std::uint8_t>> takeMessages() {
        std::vector<std::vector<std::uint8_t>> taken;
        for (const auto& message : system.messages) {
            taken.push_back(message.bytes);
        }
        system.messages.clear();
        return taken;
    }

    VirtualMainActor actor;
    headless::MidiSystemAdapter system;
    MidiOutputManager midi{system, actor};
    PerformanceController controller;

private:
    static PerformanceState even(PerformanceState state) {
        state.humanizeVelocity = 0;
        return state;
    }
};

} // namespace tavro
