#pragma once

#include "PlatformInterfaces/MidiSystem.h"

#include <string>
#include <string_view>
#include <vector>

namespace tavro::jack {

/// Gives every port name a number, counted up from 1, which it keeps: a port that goes and returns under its
/// name is the same destination as before.
class DestinationIdentifiers {
public:
    /// The number of this name, a new one when it was never asked for.
    [[nodiscard]] MidiObjectRef identifierOf(std::string_view portName);

    /// The name of this number; null for 0 and for a number that was never given.
    [[nodiscard]] const std::string* portName(MidiObjectRef identifier) const;

private:
    std::vector<std::string> names_;
};

} // namespace tavro::jack
