#pragma once

#include <string>
#include <vector>

namespace tavro::guard {

/// Sends the panic to MIDI ports of a JACK server, from a client that exists for that moment. Takes some
/// periods; while a client before the receivers is stopped the server gives these no time, and nothing
/// reaches them. Without a server, or for ports that are gone, nothing happens.
class JackSilence {
public:
    JackSilence() = delete;

    static void send(const std::vector<std::string>& ports);
};

} // namespace tavro::guard
