#pragma once

#include "MidiOutput/MidiOutputManager.h"
#include "Platform/Linux/Alsa/MidiSystemAdapter.h"
#include "Platform/Qt/QtMainActor.h"
#include "Player/ObservedMidiSystem.h"
#include "SequencerPeer.h"

#include <vector>

namespace tavro::proof {

/// The program's MIDI output with somebody in between who reads along, and who can keep the adapter from
/// being asked to schedule, so that timers of the main thread do it.
class StrumInstrument {
public:
    enum class Way { queue, timers };

    explicit StrumInstrument(Way way = Way::queue);

    [[nodiscard]] MidiOutputManager& manager() { return manager_; }

    [[nodiscard]] alsa::MidiSystemAdapter& adapter() { return adapter_; }

    /// Every key has notes of its own, `notesOfKey` of them.
    static constexpr int notesOfKey = 5;
    static constexpr int keys = 20;

    void press(int key, int stepMilliseconds);
    /// The same strum, `slowStep` from note to note, which no strum of the program is: the least that a check
    /// does between two notes takes long on a busy machine.
    void pressSlowly(int key);
    static constexpr int slowStep = 200;

    void release(int key);

    /// All that was sent, a scheduled note at the time at which it was settled.
    [[nodiscard]] const std::vector<Bytes>& told() const { return told_; }

    /// What panic sends.
    [[nodiscard]] static std::vector<Bytes> panic();

private:
    [[nodiscard]] static std::vector<NoteEvent> events(NoteEvent::EventType type, int key);

    QtMainActor mainActor_;
    alsa::MidiSystemAdapter adapter_{mainActor_};
    ObservedMidiSystem observed_{adapter_};
    std::vector<Bytes> told_;
    MidiOutputManager manager_{observed_, mainActor_};
};

/// What begins and ends one of a key's notes.
[[nodiscard]] Bytes on(int key, int note);
[[nodiscard]] Bytes off(int key, int note);

} // namespace tavro::proof
