#include "Platform/Linux/Jack/ScheduledMessages.h"

#include "Platform/Linux/Jack/PeriodClock.h"

#include <algorithm>
#include <bit>

namespace tavro::jack {

namespace {

// Everything that the two threads have to agree about is one word: the phase, the number of the message,
// which tells it from all others that had the same place, and its stamp, or its delay while it is waiting for
// the gesture to begin.
using State = std::uint64_t;

enum class Phase : std::uint8_t { free, waiting, scheduled, playing };

constexpr int phaseBits = 2;
constexpr int timeShift = 32;
constexpr int indexBits = std::bit_width(ScheduledMessages::capacity - 1);
// A ticket is the number and the place.
constexpr int numberBits = 32 - indexBits;
constexpr std::uint32_t numberMask = (std::uint32_t{1} << numberBits) - 1;
static_assert(phaseBits + numberBits <= timeShift);
static_assert(std::has_single_bit(ScheduledMessages::capacity));

constexpr State stateOf(Phase phase, std::uint32_t number, std::uint32_t time) {
    return static_cast<State>(phase) | State{number} << phaseBits | State{time} << timeShift;
}

constexpr Phase phaseOf(State state) {
    return static_cast<Phase>(state & ((State{1} << phaseBits) - 1));
}

constexpr std::uint32_t numberOf(State state) {
    return static_cast<std::uint32_t>(state >> phaseBits) & numberMask;
}

constexpr std::uint32_t timeOf(State state) {
    return static_cast<std::uint32_t>(state >> timeShift);
}

constexpr State withPhase(State state, Phase phase) {
    return stateOf(phase, numberOf(state), timeOf(state));
}

constexpr MidiTicket ticketOf(std::uint32_t number, std::size_t index) {
    return number << indexBits | static_cast<MidiTicket>(index);
}

constexpr std::size_t indexOf(MidiTicket ticket) {
    return ticket & (ScheduledMessages::capacity - 1);
}

/// Whether the state is that of the ticket's message and the message is not over.
constexpr bool isAlive(State state, MidiTicket ticket) {
    return numberOf(state) == ticket >> indexBits && phaseOf(state) != Phase::free;
}

constexpr bool isOlder(std::uint32_t number, std::uint32_t other) {
    return ((number - other) & numberMask) > numberMask / 2;
}

constexpr bool isFirst(State state, State other) {
    return timeOf(state) == timeOf(other) ? isOlder(numberOf(state), numberOf(other))
                                          : isBefore(timeOf(state), timeOf(other));
}

} // namespace

std::uint32_t ScheduledMessages::Due::stamp() const {
    return timeOf(state_);
}

ScheduledMessages::ScheduledMessages() {
    settled_.reserve(capacity);
}

std::optional<MidiTicket> ScheduledMessages::add(std::uint32_t delay, std::uint16_t port,
                                                 std::span<const std::uint8_t> message) {
    if (message.empty() || message.size() > longestMessage) {
        return std::nullopt;
    }
    // Acquire: the second thread is done with the message that it has released.
    const auto slot = std::ranges::find_if(slots_, [](const Slot& candidate) {
        return phaseOf(candidate.state.load(std::memory_order_acquire)) == Phase::free;
    });
    if (slot == slots_.end()) {
        return std::nullopt;
    }
    slot->message.port = port;
    slot->message.size = static_cast<std::uint8_t>(message.size());
    std::ranges::copy(message, slot->message.bytes.begin());
    const auto number = nextNumber_;
    nextNumber_ = (nextNumber_ + 1) & numberMask;
    used_.fetch_add(1, std::memory_order_relaxed);
    // Release: who sees it waiting sees the message and the count too.
    slot->state.store(stateOf(Phase::waiting, number, delay), std::memory_order_release);
    return ticketOf(number, static_cast<std::size_t>(slot - slots_.begin()));
}

bool ScheduledMessages::cancel(MidiTicket ticket) {
    auto& slot = slots_[indexOf(ticket)];
    auto state = slot.state.load(std::memory_order_relaxed);
    // Again where it fails: the message may just have begun, and can be taken back all the same.
    while (isAlive(state, ticket) && phaseOf(state) != Phase::playing) {
        if (slot.state.compare_exchange_weak(state, withPhase(state, Phase::free),
                                             std::memory_order_relaxed)) {
            used_.fetch_sub(1, std::memory_order_relaxed);
            return true;
        }
    }
    settle(ticket);
    return false;
}

void ScheduledMessages::settle(MidiTicket ticket) {
    if (isAlive(slots_[indexOf(ticket)].state.load(std::memory_order_relaxed), ticket)) {
        settled_.push_back({.ticket = ticket, .isOrdered = false});
    }
}

std::size_t ScheduledMessages::cancelAll(std::uint16_t port) {
    std::size_t count = 0;
    for (std::size_t index = 0; index < capacity; ++index) {
        const auto& slot = slots_[index];
        const auto state = slot.state.load(std::memory_order_relaxed);
        const auto ticket = ticketOf(numberOf(state), index);
        if (phaseOf(state) != Phase::free && slot.message.port == port &&
            std::ranges::find(settled_, ticket, &Settled::ticket) == settled_.end() && cancel(ticket)) {
            ++count;
        }
    }
    return count;
}

std::optional<MidiTicket> ScheduledMessages::unorderedSettled() {
    dropPlayed();
    const auto found = std::ranges::find(settled_, false, &Settled::isOrdered);
    return found == settled_.end() ? std::nullopt : std::optional(found->ticket);
}

void ScheduledMessages::setOrdered(MidiTicket ticket) {
    for (auto& settled : settled_) {
        settled.isOrdered = settled.isOrdered || settled.ticket == ticket;
    }
}

bool ScheduledMessages::isSettledOneWaiting() {
    dropPlayed();
    return !settled_.empty();
}

void ScheduledMessages::dropPlayed() {
    std::erase_if(settled_, [this](const Settled& settled) {
        // Acquire: what was written for the message before its release comes before what the caller does.
        const auto state = slots_[indexOf(settled.ticket)].state.load(std::memory_order_acquire);
        return !isAlive(state, settled.ticket);
    });
}

void ScheduledMessages::start(MidiTicket last, std::uint32_t stamp) {
    const auto lastNumber = last >> indexBits;
    for (auto& slot : slots_) {
        auto state = slot.state.load(std::memory_order_relaxed);
        if (phaseOf(state) == Phase::waiting && !isOlder(lastNumber, numberOf(state))) {
            // Who fails was quicker in taking it back.
            slot.state.compare_exchange_strong(
                state, stateOf(Phase::scheduled, numberOf(state), stamp + timeOf(state)),
                std::memory_order_relaxed);
        }
    }
}

std::optional<std::uint32_t> ScheduledMessages::stampOf(MidiTicket ticket) const {
    const auto state = slots_[indexOf(ticket)].state.load(std::memory_order_relaxed);
    const auto hasBegun = isAlive(state, ticket) && phaseOf(state) != Phase::waiting;
    return hasBegun ? std::optional(timeOf(state)) : std::nullopt;
}

std::optional<ScheduledMessages::Due> ScheduledMessages::earliest(std::uint32_t lastStamp) const {
    std::optional<Due> found;
    if (used_.load(std::memory_order_relaxed) == 0) {
        return found;
    }
    for (std::size_t index = 0; index < capacity; ++index) {
        const auto state = slots_[index].state.load(std::memory_order_relaxed);
        if (phaseOf(state) == Phase::scheduled && !isBefore(lastStamp, timeOf(state)) &&
            (!found || isFirst(state, found->state_))) {
            found.emplace();
            found->index_ = index;
            found->state_ = state;
        }
    }
    return found;
}

const ScheduledMessages::Message* ScheduledMessages::take(const Due& due) {
    auto& slot = slots_[due.index_];
    auto state = due.state_;
    // Acquire: the bytes that were there before it was scheduled.
    const auto isTaken = slot.state.compare_exchange_strong(
        state, withPhase(state, Phase::playing), std::memory_order_acquire, std::memory_order_relaxed);
    return isTaken ? &slot.message : nullptr;
}

void ScheduledMessages::release(const Due& due) {
    used_.fetch_sub(1, std::memory_order_relaxed);
    slots_[due.index_].state.store(withPhase(due.state_, Phase::free), std::memory_order_release);
}

void ScheduledMessages::putBack(const Due& due) {
    slots_[due.index_].state.store(due.state_, std::memory_order_release);
}

} // namespace tavro::jack
