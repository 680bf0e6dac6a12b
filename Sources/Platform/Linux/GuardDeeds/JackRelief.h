#pragma once

#include <sys/types.h>

namespace tavro::guard {

/// Frees a JACK graph of a client that is stopped: a server gives no time to what stands behind it.
class JackRelief {
public:
    JackRelief() = delete;

    /// Ends the connections of a process to JACK servers when it is stopped, so that these go on without it.
    /// When it goes on it finds itself shut out, as at a server's end, and may come back. For one that runs,
    /// or has ended, nothing happens.
    static void cutOffStopped(pid_t process);
};

} // namespace tavro::guard
