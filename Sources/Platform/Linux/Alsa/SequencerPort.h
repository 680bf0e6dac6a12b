#pragma once

#include "Platform/Linux/Alsa/PortAddress.h"

#include <string>

namespace tavro::alsa {

/// A port of some program, as the sequencer lists it.
struct SequencerPort {
    PortAddress address;
    std::string clientName;
    std::string portName;

    /// The name for people, who know a port by its program: "FLUID Synth Synth input". Many programs put
    /// their own name in front of the port's already ("Midi Through Port-0"), and it is not said twice.
    [[nodiscard]] std::string displayName() const;

    friend bool operator==(const SequencerPort&, const SequencerPort&) = default;
};

} // namespace tavro::alsa
