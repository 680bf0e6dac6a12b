#pragma once

#include <string>
#include <vector>

namespace tavro::guard {

/// Sends the panic to MIDI ports of a JACK server, from a client that exists for that moment. Takes some
/// periods; on a server in its synchronous mode, which stands still with a client that is stopped, it takes
/// until that one goes on or ends. Without a server, or for ports that are gone, nothing happens.
class JackSilence {
public:
    JackSilence() = delete;

    /// Each is the program's port and the receiver's, with a tab between them.
    static void send(const std::vector<std::string>& connections);
};

} // namespace tavro::guard
