#pragma once

#include "Concurrency/VirtualMainActor.h"
#include "MidiOutput/MidiOutputManager.h"
#include "Performance/PerformanceController.h"
#include "Player/KeyScript.h"
#include "Player/ObservedMidiSystem.h"
#include "Player/Pacer.h"
#include "Player/PlayerOutput.h"

#include <deque>
#include <vector>

namespace tavro {

/// Plays key scripts through the application's own controller. Everything runs in virtual time, in one fixed
/// order, and the pacer holds it back to whatever time it keeps: so a script sends the same messages in the
/// same order, played live or not. Main thread only.
class ScriptPlayer {
public:
    /// Plays by the first system in which a client can be created. The collaborators must outlive this.
    ScriptPlayer(PlayerOutput& output, const std::vector<MidiSystem*>& midiSystems, Pacer& pacer,
                 const PerformanceState& initialState = {});
    ScriptPlayer(PlayerOutput& output, MidiSystem& midiSystem, Pacer& pacer,
                 const PerformanceState& initialState = {});

    /// The output's destinations and its state.
    [[nodiscard]] const MidiOutputManager& midi() const { return midi_; }

    /// From now on everything goes to this destination; 0 is the program's own source.
    void selectDestination(MidiObjectRef id) { controller_.selectDestination(id); }

    /// Runs the script. Stops in the middle when the pacer was interrupted, which the loss of the MIDI system
    /// does too.
    void play(const KeyScript& script);

    /// Runs everything that is scheduled.
    void runOut();

    /// Silences everything; the script may go on.
    void silence() { controller_.stopAllNotes(); }

    /// What the command `quit` does: silences everything, once.
    void quit();

    /// Whether the connection to the MIDI system has ended by itself.
    [[nodiscard]] bool hasLostMidiSystem() const { return hasLostMidiSystem_; }

private:
    /// Runs the work up to this time, each piece at its own. False when the pacer was interrupted.
    bool passUntil(std::chrono::nanoseconds time);
    void run(const KeyScript::At& command);
    void run(const KeyScript::Down& command);
    void run(const KeyScript::Up& command);
    void run(const KeyScript::Set& command);
    void run(const KeyScript::Control& command);
    void run(const KeyScript::Panic& command);
    void run(const KeyScript::Show& command);
    void run(const KeyScript::Quit& command);
    [[nodiscard]] std::vector<MidiSystem*> observed(const std::vector<MidiSystem*>& systems);
    [[nodiscard]] std::chrono::milliseconds time() const;
    [[nodiscard]] std::vector<std::string> inLayoutOrder(const std::set<Character>& keys) const;

    PlayerOutput& output_;
    Pacer& pacer_;
    VirtualMainActor mainActor_;
    /// Those to be tried, of which one plays.
    std::deque<ObservedMidiSystem> midiSystems_;
    MidiOutputManager midi_;
    PerformanceController controller_;
    bool hasQuit_ = false;
    bool hasLostMidiSystem_ = false;
    /// Until then no command runs but the present one.
    std::chrono::nanoseconds nextCommandTime_{0};
};

} // namespace tavro
