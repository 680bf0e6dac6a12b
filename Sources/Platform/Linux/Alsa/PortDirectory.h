#pragma once

#include "Platform/Linux/Alsa/SequencerPort.h"

#include <cstddef>
#include <vector>

#include <alsa/asoundlib.h>

namespace tavro::alsa {

/// All ports that messages can be sent to, in the sequencer's order: those that may be written and
/// subscribed, but for the handle's own and those of the sequencer itself.
[[nodiscard]] std::vector<SequencerPort> listDestinations(snd_seq_t& sequencer);

/// How many ports are connected to this one of the handle's own ports and get what appears at it.
[[nodiscard]] std::size_t countListeners(snd_seq_t& sequencer, int port);

/// Who has subscribed to the port.
[[nodiscard]] std::vector<PortAddress> listListeners(snd_seq_t& sequencer, int port);

/// Whether one of the handle's own ports is connected to another port.
[[nodiscard]] bool isConnected(snd_seq_t& sequencer, int port, PortAddress destination);

} // namespace tavro::alsa
