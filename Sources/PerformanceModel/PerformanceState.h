#pragma once

#include "PerformanceModel/ChordMode.h"
#include "PerformanceModel/KeyboardLayoutKind.h"

#include <cstdint>
#include <string>

namespace tavro {

/// Every musical setting of a performance. The record stores what it is given; ranges are enforced where
/// the values are used. The initial values are the defaults of the built-in preset and of decoding.
struct PerformanceState {
    /// Root of the scale above C, in semitones; the picker offers 0 to 11.
    std::int64_t rootSemitone = 0;
    /// A name of `ScaleEngine::scales`; any other plays "Chromatic".
    std::string scaleName = "Chromatic";
    /// MIDI note of the C that the home row's octave is built on.
    std::int64_t baseMidiC = 60;
    /// Transposition of the whole keyboard, in octaves.
    std::int64_t globalOctaveOffset = 0;
    /// Velocity of note-ons, used within 1 to 127.
    std::int64_t velocity = 100;
    /// Random velocity variation either way, used up to 30; 0 is off.
    std::int64_t humanizeVelocity = 7;
    /// Milliseconds between successive notes of a chord, used within -50 to 50; negative is downward.
    std::int64_t strumMilliseconds = 0;
    /// Shape of the chords, used within 0 to 100.
    std::int64_t voicingComplexity = 0;
    /// Most notes at once, used up to 16; 0 or less is no limit.
    std::int64_t maxChordNotes = 8;
    /// MIDI channel as the user counts it, used within 1 to 16.
    std::int64_t midiChannel = 1;
    ChordMode chordMode = ChordMode::off;
    /// A key sounds until it is pressed again.
    bool holdMode = false;
    /// A chord cluster sounds until a new one starts.
    bool smartHoldMode = false;
    /// The chord's root sounds below what is played.
    bool bassNoteEnabled = false;
    /// Octaves from the root down to the bass note; up to 1 acts as 1, from 2 on as 2.
    std::int64_t bassOctaveDown = 1;
    /// The two upper rows play single melody notes.
    bool splitModeEnabled = false;
    /// Further transposition of the melody rows, in octaves.
    std::int64_t melodyOctaveOffset = 0;
    KeyboardLayoutKind keyboardLayout = KeyboardLayoutKind::qwertz;

    friend bool operator==(const PerformanceState&, const PerformanceState&) = default;
};

} // namespace tavro
