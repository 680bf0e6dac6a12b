#pragma once

#include "Concurrency/VirtualMainActor.h"
#include "MidiOutput/MidiOutputManager.h"
#include "Performance/PerformanceController.h"
#include "Platform/Headless/MidiSystemAdapter.h"

#include <string>
#include <vector>

namespace tavro {

/// A controller over a MIDI system that records, in virtual time.
struct ControllerFixture {
    /// Every velocity is the state's own.
    explicit ControllerFixture(PerformanceState state = {})
        : controller(midi, mainActor, withoutChance(state)) {}

    static PerformanceState withoutChance(PerformanceState state) {
        state.humanizeVelocity = 0;
        return state;
    }

    /// What was sent since the last call, as words: "on 60", "off 60", channel messages of the panic as
    /// "cc 123 on 1"; notes of another channel than 1 with "on channel 2" and so on.
    std::vector<std::string> takeSent() {
        std::vector<std::string> words;
        for (const auto& message : midiSystem.messages) {
            words.push_back(inWords(message.bytes));
        }
        midiSystem.messages.clear();
        return words;
    }

    static std::string inWords(const std::vector<std::uint8_t>& bytes) {
        const auto channel = (bytes[0] & 0x0F) + 1;
        if ((bytes[0] & 0xF0) == 0xB0) {
            return "cc " + std::to_string(bytes[1]) + " on " + std::to_string(channel);
        }
        return ((bytes[0] & 0xF0) == 0x90 ? "on " : "off ") + std::to_string(bytes[1]) +
               (channel == 1 ? "" : " on channel " + std::to_string(channel));
    }

    template <class Change>
    void change(Change&& edit) {
        auto state = controller.state();
        edit(state);
        controller.changeState(state);
    }

    std::string chord() const { return controller.currentChordText().toStdString(); }

    std::string status() const { return midi.statusText().toStdString(); }

    headless::MidiSystemAdapter midiSystem;
    VirtualMainActor mainActor;
    MidiOutputManager midi{midiSystem, mainActor};
    PerformanceController controller;
};

} // namespace tavro
