#pragma once

#include "ApplicationShell/GlobalPlay.h"
#include "ApplicationShell/PerformanceController.h"
#include "Concurrency/VirtualMainActor.h"
#include "MidiOutput/MidiOutputManager.h"
#include "Platform/Headless/KeyboardTapAdapter.h"
#include "Platform/Headless/MidiSystemAdapter.h"

#include <cstdint>
#include <vector>

namespace tavro {

/// An instrument that reaches nobody and whose time stands still. Every velocity is 100.
class Instrument {
public:
    explicit Instrument(PerformanceState initialState = {}) : controller(midi, actor, even(initialState)) {
        tap.answersCreated = true;
        globalPlay.configureGlobalKeyboard();
    }

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
    headless::KeyboardTapAdapter tap;
    GlobalKeyboardController globalKeyboard{tap, actor};
    GlobalPlay globalPlay{controller, globalKeyboard, ModifierNaming::words};

private:
    static PerformanceState even(PerformanceState state) {
        state.humanizeVelocity = 0;
        return state;
    }
};

} // namespace tavro
