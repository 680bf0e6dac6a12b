#include "Player/ObservedMidiSystem.h"

#include <utility>

namespace tavro {

MidiCreation ObservedMidiSystem::createClient(std::string_view name, std::function<void()> onChange) {
    return system_.createClient(name, std::move(onChange));
}

MidiCreation ObservedMidiSystem::createOutputPort(MidiObjectRef client, std::string_view name) {
    return system_.createOutputPort(client, name);
}

MidiCreation ObservedMidiSystem::createSource(MidiObjectRef client, std::string_view name) {
    return system_.createSource(client, name);
}

std::size_t ObservedMidiSystem::numberOfDestinations() {
    return system_.numberOfDestinations();
}

MidiObjectRef ObservedMidiSystem::destination(std::size_t index) {
    return system_.destination(index);
}

std::optional<std::string> ObservedMidiSystem::displayName(MidiObjectRef destination) {
    return system_.displayName(destination);
}

std::optional<std::string> ObservedMidiSystem::name(MidiObjectRef destination) {
    return system_.name(destination);
}

void ObservedMidiSystem::prepareRoute(MidiObjectRef outputPort, MidiObjectRef destination) {
    system_.prepareRoute(outputPort, destination);
}

void ObservedMidiSystem::send(MidiObjectRef outputPort, MidiObjectRef destination,
                              std::span<const std::uint8_t> message) {
    system_.send(outputPort, destination, message);
    tell(message);
}

void ObservedMidiSystem::received(MidiObjectRef source, std::span<const std::uint8_t> message) {
    system_.received(source, message);
    tell(message);
}

void ObservedMidiSystem::beginGesture() {
    system_.beginGesture();
}

void ObservedMidiSystem::endGesture() {
    system_.endGesture();
}

std::optional<MidiTicket> ObservedMidiSystem::schedule(MidiObjectRef portOrSource, MidiObjectRef destination,
                                                       std::span<const std::uint8_t> message,
                                                       std::chrono::nanoseconds delay) {
    if (mayGoAhead && !mayGoAhead(delay)) {
        return std::nullopt;
    }
    const auto ticket = system_.schedule(portOrSource, destination, message, delay);
    if (ticket) {
        scheduled_[*ticket].assign(message.begin(), message.end());
    }
    return ticket;
}

bool ObservedMidiSystem::cancel(MidiTicket ticket) {
    const bool isCancelled = system_.cancel(ticket);
    if (isCancelled) {
        scheduled_.erase(ticket);
    } else {
        tellScheduled(ticket);
    }
    return isCancelled;
}

void ObservedMidiSystem::settle(MidiTicket ticket) {
    system_.settle(ticket);
    tellScheduled(ticket);
}

void ObservedMidiSystem::setLossHandler(std::function<void()> handler) {
    system_.setLossHandler([this, handler = std::move(handler)] {
        // What was handed over went with the system.
        scheduled_.clear();
        if (onLoss) {
            onLoss();
        }
        if (handler) {
            handler();
        }
    });
}

std::optional<std::size_t> ObservedMidiSystem::listeners(MidiObjectRef source) {
    return system_.listeners(source);
}

std::vector<std::string> ObservedMidiSystem::receivers(MidiObjectRef source, MidiObjectRef destination) {
    return system_.receivers(source, destination);
}

std::uint64_t ObservedMidiSystem::droppedMessages() const {
    return system_.droppedMessages();
}

void ObservedMidiSystem::disposePort(MidiObjectRef outputPort) {
    system_.disposePort(outputPort);
}

void ObservedMidiSystem::disposeEndpoint(MidiObjectRef source) {
    system_.disposeEndpoint(source);
}

void ObservedMidiSystem::disposeClient(MidiObjectRef client) {
    system_.disposeClient(client);
}

void ObservedMidiSystem::tell(std::span<const std::uint8_t> message) const {
    if (onMessage) {
        onMessage(message);
    }
}

void ObservedMidiSystem::tellScheduled(MidiTicket ticket) {
    if (const auto message = scheduled_.extract(ticket)) {
        tell(message.mapped());
    }
}

} // namespace tavro
