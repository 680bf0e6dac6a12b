#pragma once

#include "PlatformInterfaces/MidiSystem.h"

#include <string>

namespace tavro {

/// A place that messages can be sent to, as the picker offers it.
struct MidiDestination {
    MidiObjectRef id;
    std::string name;

    friend bool operator==(const MidiDestination&, const MidiDestination&) = default;
};

} // namespace tavro
