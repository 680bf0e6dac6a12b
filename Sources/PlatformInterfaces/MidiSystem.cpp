#include "PlatformInterfaces/MidiSystem.h"

namespace tavro {

// What a system offers that has no more than the plain road.

bool MidiSystem::mayComeLater() const {
    return false;
}

void MidiSystem::beginGesture() {}

void MidiSystem::endGesture() {}

std::optional<MidiTicket> MidiSystem::schedule(MidiObjectRef /*portOrSource*/, MidiObjectRef /*destination*/,
                                               std::span<const std::uint8_t> /*message*/,
                                               std::chrono::nanoseconds /*delay*/) {
    return std::nullopt;
}

bool MidiSystem::cancel(MidiTicket /*ticket*/) {
    return false;
}

void MidiSystem::settle(MidiTicket /*ticket*/) {}

// NOLINTNEXTLINE(performance-unnecessary-value-param): those that can be lost keep it
void MidiSystem::setLossHandler(std::function<void()> /*onLoss*/) {}

std::optional<std::size_t> MidiSystem::listeners(MidiObjectRef /*source*/) {
    return std::nullopt;
}

std::vector<std::string> MidiSystem::receivers(MidiObjectRef /*source*/, MidiObjectRef /*destination*/) {
    return {};
}

bool MidiSystem::hasLeftUnsent() const {
    return false;
}

std::optional<MidiPeriod> MidiSystem::period() const {
    return std::nullopt;
}

std::uint64_t MidiSystem::droppedMessages() const {
    return 0;
}

} // namespace tavro
