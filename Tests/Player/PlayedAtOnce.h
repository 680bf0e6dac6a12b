#pragma once

#include "Platform/Headless/MidiSystemAdapter.h"
#include "Player/Pacer.h"
#include "Player/ScriptPlayer.h"

namespace tavro {

/// Plays the script in virtual time to its end, and what it has scheduled. Returns everything that was sent.
inline std::vector<headless::MidiSystemAdapter::Message>
playedAtOnce(const KeyScript& script, PlayerOutput& output, const PerformanceState& state = {}) {
    headless::MidiSystemAdapter midiSystem;
    VirtualPacer pacer;
    ScriptPlayer player(output, midiSystem, pacer, state);
    player.play(script);
    player.runOut();
    return midiSystem.messages;
}

} // namespace tavro
