#pragma once

#include "../Alsa/SequencerPeer.h"

#include <set>
#include <utility>

namespace tavro::proof {

/// A program of the sequencer that sounds what is sent to it.
class Synthesizer {
public:
    /// The name of its port in lists of destinations.
    static constexpr auto name = "Synth in";

    /// The notes that sound, each with its channel.
    [[nodiscard]] const std::set<std::pair<int, int>>& sounding();

private:
    SequencerPeer peer_{"Synth"};
    std::set<std::pair<int, int>> sounding_;
};

} // namespace tavro::proof
