#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include <jack/jack.h>

namespace tavro::bench {

/// A JACK client that does nothing but write strums by counting frames: how exact a strum can be on this
/// machine and server. Everything but the server's own calls belongs to one thread.
class BareStrum {
public:
    /// Throws `std::runtime_error` without a server.
    explicit BareStrum(const std::string& name);

    BareStrum(const BareStrum&) = delete;
    BareStrum& operator=(const BareStrum&) = delete;
    ~BareStrum();

    /// The first note comes at the beginning of the next period, each other `step` frames after the one
    /// before. The strum before must be over.
    void play(std::uint32_t notes, jack_nframes_t step);

private:
    int process(jack_nframes_t frames);

    jack_client_t* client_ = nullptr;
    jack_port_t* port_ = nullptr;
    /// Notes and step of a strum that has not begun; 0 for none.
    std::atomic<std::uint64_t> request_ = 0;
    /// Of the server's thread: what of the strum is left, and where the next note comes.
    std::uint32_t left_ = 0;
    jack_nframes_t step_ = 0;
    jack_nframes_t next_ = 0;
};

} // namespace tavro::bench
