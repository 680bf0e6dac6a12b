#pragma once

#include <string>
#include <vector>

namespace tavro::guard {

/// Sends the panic to ports of the kernel's sequencer, each named "CLIENT:PORT" by its numbers, from a client
/// that exists for that moment. Without a sequencer, or for ports that are gone, nothing happens.
class AlsaSilence {
public:
    AlsaSilence() = delete;

    static void send(const std::vector<std::string>& ports);
};

} // namespace tavro::guard
