#pragma once

#include "Platform/Linux/Alsa/SequencerPort.h"
#include "PlatformInterfaces/MidiSystem.h"

#include <map>
#include <optional>
#include <vector>

namespace tavro::alsa {

/// Gives every destination a number, `client << 8 | port`. The sequencer gives the address of a program that
/// has gone to the next one that comes; a port that is found there under other names gets a number with a
/// count in the upper sixteen bits, so that a chosen destination never turns into another one. A port that
/// returns under its names and at its address is the same destination as before.
class DestinationIdentifiers {
public:
    /// The number of a port that is there. One that changed its names and did not go keeps its number.
    MidiObjectRef identifierOf(const SequencerPort& port);

    /// What is found at this address next may be another port.
    void portHasGone(PortAddress address);

    /// The same for all ports of a client, and for all ports that there are.
    void clientHasGone(std::uint8_t client);
    void allMayHaveGone();

    /// Whether its port is there, as far as was told.
    [[nodiscard]] bool isThere(MidiObjectRef identifier) const;

    /// The port as it was seen last; null for a number that was never given.
    [[nodiscard]] const SequencerPort* port(MidiObjectRef identifier) const;

private:
    struct Place {
        /// All that stood here, in order of their coming.
        std::vector<SequencerPort> ports;
        /// Which one stands here now.
        std::optional<std::size_t> present;
    };

    std::map<MidiObjectRef, Place> places_;
};

} // namespace tavro::alsa
