#pragma once

#include "MidiOutput/MidiOutputManager.h"

#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tavro {

/// The destinations as the command line shows and takes them.
struct DestinationChoice {
    /// A destination that is not there, or one of several of the same name; `what()` says what there is.
    class Error : public std::runtime_error {
        using std::runtime_error::runtime_error;
    };

    /// The one with exactly this name or, when none has it, with this number. Throws `Error`.
    [[nodiscard]] static MidiObjectRef find(std::span<const MidiDestination> destinations,
                                            std::string_view nameOrNumber);

    /// A line for each: number, tab, name.
    [[nodiscard]] static std::string list(std::span<const MidiDestination> destinations);
};

} // namespace tavro
