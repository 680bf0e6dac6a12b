#pragma once

#include "ApplicationShell/PerformanceController.h"
#include "Concurrency/VirtualMainActor.h"
#include "MidiOutput/MidiOutputManager.h"
#include "Platform/Headless/MidiSystemAdapter.h"
#include "Player/KeyScript.h"
#include "Player/PlayerOutput.h"

namespace tavro {

/// Plays key scripts in virtual time through the application's own controller and a MIDI system that records.
class ScriptPlayer {
public:
    /// The output must outlive this.
    explicit ScriptPlayer(PlayerOutput& output, const PerformanceState& initialState = {});

    /// Runs the script, and then everything that it has scheduled.
    void play(const KeyScript& script);

private:
    void run(const KeyScript::At& command);
    void run(const KeyScript::Down& command);
    void run(const KeyScript::Up& command);
    void run(const KeyScript::Set& command);
    void run(const KeyScript::Control& command);
    void run(const KeyScript::Panic& command);
    void run(const KeyScript::Show& command);
    void run(const KeyScript::Quit& command);
    [[nodiscard]] std::chrono::milliseconds time() const;
    [[nodiscard]] std::vector<std::string> inLayoutOrder(const std::set<Character>& keys) const;

    PlayerOutput& output_;
    VirtualMainActor mainActor_;
    headless::MidiSystemAdapter midiSystem_;
    MidiOutputManager midi_;
    PerformanceController controller_;
    bool hasQuit_ = false;
};

} // namespace tavro
