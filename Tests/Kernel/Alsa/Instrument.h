#pragma once

#include "MidiOutput/MidiOutputManager.h"
#include "Platform/Linux/Alsa/MidiSystemAdapter.h"
#include "Platform/Qt/QtMainActor.h"

#include <optional>
#include <string>

namespace tavro::proof {

/// The program's MIDI output as it really is, from the manager down to the sequencer.
class Instrument {
public:
    [[nodiscard]] MidiOutputManager& manager() { return manager_; }

    [[nodiscard]] alsa::MidiSystemAdapter& adapter() { return adapter_; }

    /// Where "TAVRO Out" stands; throws when the sequencer has none.
    [[nodiscard]] static alsa::PortAddress source();

    /// The entry of the manager's list with this number; null without one.
    [[nodiscard]] const MidiDestination* listed(MidiObjectRef number) const;

    /// The number under which the list has a name first; 0 when it does not.
    [[nodiscard]] MidiObjectRef numberOf(const std::string& name) const;

    void noteOn(int note);
    void noteOff(int note);

private:
    QtMainActor mainActor_;
    alsa::MidiSystemAdapter adapter_{mainActor_};
    MidiOutputManager manager_{adapter_, mainActor_};
};

} // namespace tavro::proof
