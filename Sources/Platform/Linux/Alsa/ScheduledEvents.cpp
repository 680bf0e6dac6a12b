#include "Platform/Linux/Alsa/ScheduledEvents.h"

#include <algorithm>
#include <bitset>
#include <vector>

namespace tavro::alsa {

std::optional<MidiTicket> ScheduledEvents::schedule(const snd_seq_event_t& event,
                                                    std::chrono::nanoseconds delay) {
    const auto tag = freeTag();
    if (!tag) {
        return std::nullopt;
    }
    if (!isRunning_) {
        if (!queue_.start()) {
            return std::nullopt;
        }
        isRunning_ = true;
    }
    const auto number = ++lastNumber_;
    const auto time = queue_.now() + delay;
    auto added = event;
    // The mark goes first: as long as it has not come, the event is still in the queue.
    if (!queue_.addMark(number, time, *tag) || !queue_.add(added, time, *tag)) {
        queue_.remove(*tag);
        stopIfIdle();
        return std::nullopt;
    }
    events_.insert({number, {.event = event, .tag = *tag, .time = time}});
    return number;
}

bool ScheduledEvents::cancel(MidiTicket ticket) {
    const auto found = find(ticket);
    if (found == events_.end()) {
        return false;
    }
    queue_.remove(found->second.tag);
    // Only now: a mark that has not come by now was taken out, or is on its way, and then the event behind it
    // was taken out.
    look();
    const auto mayBeOut = found->second.mayBeOut;
    events_.erase(found);
    if (mayBeOut) {
        // It may be on its way. It is not in the queue, so that nothing need wait for its time.
        hold(EventQueue::Time::zero());
    }
    stopIfIdle();
    return !mayBeOut;
}

void ScheduledEvents::settle(MidiTicket ticket) {
    const auto found = find(ticket);
    if (found == events_.end()) {
        return;
    }
    found->second.isSettled = true;
    hold(found->second.time);
}

bool ScheduledEvents::isHolding() {
    if (hold_) {
        look();
    }
    return hold_.has_value();
}

bool ScheduledEvents::addBehind(snd_seq_event_t& event) {
    const auto time = hold_ ? hold_->time : EventQueue::Time::zero();
    const auto isAdded = queue_.add(event, time, 0);
    hold(time);
    return isAdded;
}

std::size_t ScheduledEvents::giveUp(const std::function<bool(const snd_seq_event_t&)>& isMeant) {
    std::vector<MidiTicket> tickets;
    for (const auto& [ticket, waiting] : events_) {
        if (!waiting.isSettled && isMeant(waiting.event)) {
            tickets.push_back(ticket);
        }
    }
    return static_cast<std::size_t>(
        std::ranges::count_if(tickets, [this](MidiTicket ticket) { return cancel(ticket); }));
}

void ScheduledEvents::finish() {
    constexpr auto patience = 20;
    for (auto turn = 0; turn < patience && isHolding(); ++turn) {
        queue_.await();
    }
}

void ScheduledEvents::markHasCome(std::uint32_t number) {
    if (const auto found = events_.find(number); found != events_.end()) {
        found->second.mayBeOut = true;
    } else if (hold_ && hold_->mark == number) {
        hold_.reset();
        std::erase_if(events_, [](const auto& entry) { return entry.second.isSettled; });
        stopIfIdle();
    }
}

void ScheduledEvents::marksWereLost() {
    for (auto& [ticket, waiting] : events_) {
        waiting.mayBeOut = true;
    }
    if (hold_) {
        hold_->mark.reset();
        markHold(*hold_);
    }
}

std::optional<EventQueue::Tag> ScheduledEvents::freeTag() const {
    std::bitset<capacity + 1> used(1);
    for (const auto& [ticket, waiting] : events_) {
        used.set(waiting.tag);
    }
    for (std::size_t tag = 1; tag <= capacity; ++tag) {
        if (!used.test(tag)) {
            return static_cast<EventQueue::Tag>(tag);
        }
    }
    return std::nullopt;
}

ScheduledEvents::Events::iterator ScheduledEvents::find(MidiTicket ticket) {
    const auto found = events_.find(ticket);
    return found != events_.end() && found->second.isSettled ? events_.end() : found;
}

void ScheduledEvents::hold(EventQueue::Time time) {
    // A mark that is there already does not stand behind what this is about.
    hold_ = Hold{.time = hold_ ? std::max(hold_->time, time) : time, .mark = std::nullopt};
    // Nearly always everything is out, and the mark comes at once.
    look();
}

void ScheduledEvents::markHold(Hold& hold) {
    const auto number = ++lastNumber_;
    if (queue_.addMark(number, hold.time, 0)) {
        hold.mark = number;
    }
}

void ScheduledEvents::look() {
    // It has none when there was no room for it.
    if (hold_ && !hold_->mark) {
        markHold(*hold_);
    }
    queue_.read();
}

void ScheduledEvents::stopIfIdle() {
    if (isRunning_ && events_.empty() && !hold_) {
        queue_.stop();
        isRunning_ = false;
    }
}

} // namespace tavro::alsa
