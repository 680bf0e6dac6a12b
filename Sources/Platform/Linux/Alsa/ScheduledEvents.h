#pragma once

#include "Platform/Linux/Alsa/EventQueue.h"
#include "PlatformInterfaces/MidiSystem.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>

namespace tavro::alsa {

/// Events that wait in the sequencer for their times and can be taken back until then. Knows what the queue
/// does not tell: whether an event that is taken back has gone out already, and what must not overtake it.
/// Decision 13 has the reasons. The queue runs only while something is in it. Main thread only.
class ScheduledEvents {
public:
    /// How many can wait at a time: each has a tag of its own, and 0 is that of everything else.
    static constexpr std::size_t capacity = 255;

    /// The queue must outlive this.
    explicit ScheduledEvents(EventQueue& queue) : queue_(queue) {}

    /// Nothing, and nothing happens, when too many wait or the queue has no room or does not run.
    [[nodiscard]] std::optional<MidiTicket> schedule(const snd_seq_event_t& event,
                                                     std::chrono::nanoseconds delay);

    /// True when the event is gone and will not go out. False when it has gone out or nobody can know, and
    /// for one that was settled or given up: what is sent from now on goes out after it.
    [[nodiscard]] bool cancel(MidiTicket ticket);

    /// What is sent from now on goes out after the event.
    void settle(MidiTicket ticket);

    /// Whether something is settled and, as far as is known, not out yet: then what is to be sent goes by
    /// `addBehind`.
    [[nodiscard]] bool isHolding();

    /// Sends an event behind what is settled. False when there is no room for it.
    [[nodiscard]] bool addBehind(snd_seq_event_t& event);

    /// Takes back every event that this is said of and that is not settled. Returns how many of them had not
    /// gone out.
    std::size_t giveUp(const std::function<bool(const snd_seq_event_t&)>& isMeant);

    /// Waits until nothing is held any more, a fifth of a second at most.
    void finish();

    // What the sequencer tells.

    void markHasCome(std::uint32_t number);

    /// Any mark may have come meanwhile.
    void marksWereLost();

private:
    struct Waiting {
        snd_seq_event_t event;
        EventQueue::Tag tag;
        EventQueue::Time time;
        /// Its mark has come, or may have been lost.
        bool mayBeOut = false;
        bool isSettled = false;
    };

    struct Hold {
        /// No earlier than the time of anything that is settled.
        EventQueue::Time time;
        /// The mark behind everything that is settled; nothing while there is none.
        std::optional<std::uint32_t> mark;
    };

    using Events = std::map<MidiTicket, Waiting>;

    [[nodiscard]] std::optional<EventQueue::Tag> freeTag() const;
    /// The event, unless it is settled or not known.
    [[nodiscard]] Events::iterator find(MidiTicket ticket);
    /// What is sent from now on goes out after everything that is due then.
    void hold(EventQueue::Time time);
    void markHold(Hold& hold);
    void look();
    void stopIfIdle();

    EventQueue& queue_;
    Events events_;
    std::optional<Hold> hold_;
    /// Of events and marks alike, so that a mark is known by it.
    std::uint32_t lastNumber_ = 0;
    bool isRunning_ = false;
};

} // namespace tavro::alsa
