#pragma once

#include "Platform/Linux/Jack/MessageRing.h"

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

#include <jack/jack.h>

namespace tavro::bench {

/// A JACK client that notes when messages reach it. Everything but the server's own calls belongs to one
/// thread.
class ArrivalRecorder {
public:
    struct Arrival {
        /// Which of the sources it came from, counted from 0.
        std::uint16_t source = 0;
        std::uint8_t status = 0;
        std::uint8_t note = 0;
        std::uint8_t velocity = 0;
        /// When the callback that brought it began, by the server's clock in microseconds.
        jack_time_t time = 0;
        /// Where it is to be heard, in frames and by the same clock.
        jack_nframes_t frame = 0;
        jack_time_t frameTime = 0;

        [[nodiscard]] bool isNoteOn() const { return (status & 0xF0U) == 0x90U && velocity > 0; }
    };

    /// Has one port for each source. Throws `std::runtime_error` without a server.
    ArrivalRecorder(const std::string& name, std::vector<std::string> sources);

    ArrivalRecorder(const ArrivalRecorder&) = delete;
    ArrivalRecorder& operator=(const ArrivalRecorder&) = delete;
    ~ArrivalRecorder();

    /// Connects each source that is there and not connected yet. True when all are.
    [[nodiscard]] bool connectSources();

    /// What has come since the last call, in order.
    [[nodiscard]] std::vector<Arrival> takeArrivals();

    /// Since the beginning. A figure is worth nothing when this grew while it was taken, or when something
    /// was lost.
    [[nodiscard]] unsigned xruns() const { return xruns_.load(); }

    [[nodiscard]] unsigned lost() const { return lost_.load(); }

    /// How many periods went by without this client, on a machine that gave it no time. What was in them was
    /// not seen.
    [[nodiscard]] unsigned absences() const { return absences_.load(); }

    /// How late the server's period began that was the latest since the last call, in microseconds after the
    /// time at which the server itself expected it.
    [[nodiscard]] std::int64_t takeLateness() { return lateness_.exchange(0); }

    [[nodiscard]] jack_nframes_t rate() const { return jack_get_sample_rate(client_); }

    [[nodiscard]] jack_nframes_t period() const { return jack_get_buffer_size(client_); }

    /// Now, in frames.
    [[nodiscard]] jack_nframes_t frame() const { return jack_frame_time(client_); }

    /// When a moment comes, by the server's clock in microseconds, that is at least `delay` microseconds away
    /// and lies at this part of a period, from 0 to 1.
    [[nodiscard]] jack_time_t timeInPeriod(jack_time_t delay, double part) const;

private:
    int process(jack_nframes_t frames);
    void noteLateness(jack_time_t time);
    void noteAbsences(jack_nframes_t start, jack_nframes_t frames);

    std::vector<std::string> sources_;
    jack_client_t* client_ = nullptr;
    std::vector<jack_port_t*> ports_;
    jack::MessageRing ring_{1U << 18U};
    std::atomic<jack_nframes_t> periodStart_ = 0;
    /// Of the server's thread.
    bool hasBegun_ = false;
    std::atomic<unsigned> xruns_ = 0;
    std::atomic<unsigned> lost_ = 0;
    std::atomic<unsigned> absences_ = 0;
    std::atomic<std::int64_t> lateness_ = 0;
};

} // namespace tavro::bench
