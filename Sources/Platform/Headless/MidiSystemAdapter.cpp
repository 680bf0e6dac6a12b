#include "Platform/Headless/MidiSystemAdapter.h"

#include <algorithm>
#include <utility>

namespace tavro::headless {

void MidiSystemAdapter::announceChange() const {
    if (onChange_) {
        onChange_();
    }
}

void MidiSystemAdapter::loseConnection() const {
    if (onLoss_) {
        onLoss_();
    }
}

MidiCreation MidiSystemAdapter::createClient(std::string_view name, std::function<void()> onChange) {
    onChange_ = std::move(onChange);
    return create(clientStatus, "client " + std::string(name));
}

MidiCreation MidiSystemAdapter::createOutputPort(MidiObjectRef client, std::string_view name) {
    return create(portStatus, "port " + std::string(name) + " of " + std::to_string(client));
}

MidiCreation MidiSystemAdapter::createSource(MidiObjectRef client, std::string_view name) {
    return create(sourceStatus, "source " + std::string(name) + " of " + std::to_string(client));
}

std::size_t MidiSystemAdapter::numberOfDestinations() {
    return destinations.size();
}

MidiObjectRef MidiSystemAdapter::destination(std::size_t index) {
    return index < destinations.size() ? destinations[index].reference : 0;
}

std::optional<std::string> MidiSystemAdapter::displayName(MidiObjectRef destination) {
    const auto* found = find(destination);
    return found == nullptr ? std::nullopt : found->displayName;
}

std::optional<std::string> MidiSystemAdapter::name(MidiObjectRef destination) {
    const auto* found = find(destination);
    return found == nullptr ? std::nullopt : found->name;
}

void MidiSystemAdapter::prepareRoute(MidiObjectRef outputPort, MidiObjectRef destination) {
    calls.push_back("route " + std::to_string(outputPort) + " to " + std::to_string(destination));
}

void MidiSystemAdapter::send(MidiObjectRef /*outputPort*/, MidiObjectRef destination,
                             std::span<const std::uint8_t> message) {
    addToGesture(message);
    record({false, destination, {message.begin(), message.end()}});
}

void MidiSystemAdapter::received(MidiObjectRef source, std::span<const std::uint8_t> message) {
    addToGesture(message);
    record({true, source, {message.begin(), message.end()}});
}

void MidiSystemAdapter::beginGesture() {
    isInGesture_ = true;
    gestures.emplace_back();
}

void MidiSystemAdapter::endGesture() {
    isInGesture_ = false;
}

std::optional<MidiTicket> MidiSystemAdapter::schedule(MidiObjectRef portOrSource, MidiObjectRef destination,
                                                      std::span<const std::uint8_t> message,
                                                      std::chrono::nanoseconds delay) {
    if (!schedules) {
        return std::nullopt;
    }
    addToGesture(message);
    const bool isFromSource = destination == 0;
    scheduled[nextTicket_] = {
        {isFromSource, isFromSource ? portOrSource : destination, {message.begin(), message.end()}}, delay};
    return nextTicket_++;
}

bool MidiSystemAdapter::cancel(MidiTicket ticket) {
    if (isTooLateToCancel) {
        settle(ticket);
        return false;
    }
    return scheduled.erase(ticket) > 0;
}

void MidiSystemAdapter::settle(MidiTicket ticket) {
    if (const auto gone = scheduled.extract(ticket)) {
        record(gone.mapped().message);
    }
}

void MidiSystemAdapter::setLossHandler(std::function<void()> onLoss) {
    onLoss_ = std::move(onLoss);
}

std::optional<std::size_t> MidiSystemAdapter::listeners(MidiObjectRef /*source*/) {
    return listenerCount;
}

void MidiSystemAdapter::disposePort(MidiObjectRef outputPort) {
    calls.push_back("dispose port " + std::to_string(outputPort));
}

void MidiSystemAdapter::disposeEndpoint(MidiObjectRef source) {
    calls.push_back("dispose source " + std::to_string(source));
}

void MidiSystemAdapter::disposeClient(MidiObjectRef client) {
    calls.push_back("dispose client " + std::to_string(client));
    onChange_ = nullptr;
}

MidiCreation MidiSystemAdapter::create(std::int32_t status, std::string call) {
    calls.push_back(std::move(call));
    return status == 0 ? MidiCreation{0, nextReference_++} : MidiCreation{status, 0};
}

const MidiSystemAdapter::Destination* MidiSystemAdapter::find(MidiObjectRef destination) const {
    const auto found = std::ranges::find(destinations, destination, &Destination::reference);
    return found == destinations.end() ? nullptr : &*found;
}

void MidiSystemAdapter::addToGesture(std::span<const std::uint8_t> message) {
    if (isInGesture_) {
        gestures.back().emplace_back(message.begin(), message.end());
    }
}

void MidiSystemAdapter::record(const Message& message) {
    if (recordsMessages) {
        messages.push_back(message);
    }
    if (onMessage) {
        onMessage(message);
    }
}

} // namespace tavro::headless
