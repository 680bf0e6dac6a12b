#pragma once

#include "MidiOutput/MidiSystemTable.h"

namespace tavro {

/// The MIDI systems behind the programs' interface to them. The only place that names them.
struct MidiSystems {
    [[nodiscard]] static const MidiSystemTable& ofThisPlatform();
};

} // namespace tavro
