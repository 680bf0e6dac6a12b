#pragma once

#include <chrono>
#include <cstdint>

#include <alsa/asoundlib.h>

namespace tavro::alsa {

/// A queue of the sequencer, from which events go out at their times whatever the main thread does. Times
/// count from its start. It lets out one event after the other, each when the one before has reached all its
/// receivers, in order of their times and, among equal ones, in the order in which they were added. What is
/// added when its time has come goes out at once, or, when an event is on its way at that moment, behind it.
class EventQueue {
public:
    using Time = std::chrono::nanoseconds;
    /// Events of one tag can be taken out together.
    using Tag = unsigned char;

    EventQueue() = default;
    EventQueue(const EventQueue&) = delete;
    EventQueue& operator=(const EventQueue&) = delete;
    virtual ~EventQueue() = default;

    /// Lets time run from 0. False when it cannot. Nothing may wait in the queue.
    [[nodiscard]] virtual bool start() = 0;

    /// Lets nothing tick any more.
    virtual void stop() = 0;

    [[nodiscard]] virtual Time now() const = 0;

    /// Adds an event, whose source and destination are set. False, and nothing is added, when there is no
    /// room.
    [[nodiscard]] virtual bool add(snd_seq_event_t& event, Time time, Tag tag) = 0;

    /// Adds an event to the program itself, which tells that everything before it has gone out.
    [[nodiscard]] virtual bool addMark(std::uint32_t number, Time time, Tag tag) = 0;

    /// Takes out, in one step, all events with this tag that are not on their way.
    virtual void remove(Tag tag) = 0;

    /// Has the marks told that have come so far, and those that were lost.
    virtual void read() = 0;

    /// The same, but when nothing has come waits for it, a hundredth of a second at most.
    virtual void await() = 0;
};

} // namespace tavro::alsa
