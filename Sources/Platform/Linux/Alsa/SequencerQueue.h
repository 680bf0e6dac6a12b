#pragma once

#include "Platform/Linux/Alsa/EventQueue.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace tavro::alsa {

/// The kernel's queue behind `ScheduledEvents`. Ends with the handle.
class SequencerQueue final : public EventQueue {
public:
    /// The handle must outlive this. `read` takes what has come to it.
    SequencerQueue(snd_seq_t& sequencer, std::function<void()> read);

    /// Makes the queue, whose marks go to this port of the program's own. When that fails it never starts.
    void open(int port);

    /// Tells the number of a mark, when the event is one.
    [[nodiscard]] std::optional<std::uint32_t> markOf(const snd_seq_event_t& event) const;

    /// How many events have reached a receiver, or a port that was not there, in vain.
    [[nodiscard]] std::uint64_t lost() const;

    [[nodiscard]] bool start() override;
    void stop() override;
    [[nodiscard]] Time now() const override;
    [[nodiscard]] bool add(snd_seq_event_t& event, Time time, Tag tag) override;
    [[nodiscard]] bool addMark(std::uint32_t number, Time time, Tag tag) override;
    void remove(Tag tag) override;

    void read() override { read_(); }

    void await() override;

private:
    using Clock = std::chrono::steady_clock;

    [[nodiscard]] bool makeQueue();
    void chooseTimer() const;
    void control(snd_seq_event_type_t type) const;
    [[nodiscard]] bool isRunning() const;

    snd_seq_t& sequencer_;
    std::function<void()> read_;
    /// Negative while there is none.
    int queue_ = -1;
    unsigned char port_ = 0;
    Clock::time_point start_;
};

} // namespace tavro::alsa
