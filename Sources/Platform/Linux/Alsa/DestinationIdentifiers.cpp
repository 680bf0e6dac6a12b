#include "Platform/Linux/Alsa/DestinationIdentifiers.h"

#include <algorithm>

namespace tavro::alsa {

namespace {

constexpr unsigned countShift = 16;
constexpr MidiObjectRef addressMask = 0xFFFF;

} // namespace

MidiObjectRef DestinationIdentifiers::identifierOf(const SequencerPort& port) {
    const auto number = port.address.number();
    auto& [ports, present] = places_[number];
    if (!present) {
        const auto known = std::ranges::find(ports, port);
        present = static_cast<std::size_t>(known - ports.begin());
        if (known == ports.end()) {
            ports.push_back(port);
        }
    }
    ports[*present] = port;
    return static_cast<MidiObjectRef>(*present) << countShift | number;
}

void DestinationIdentifiers::portHasGone(PortAddress address) {
    const auto place = places_.find(address.number());
    if (place != places_.end()) {
        place->second.present.reset();
    }
}

void DestinationIdentifiers::clientHasGone(std::uint8_t client) {
    for (auto& [number, place] : places_) {
        if (number >> 8U == client) {
            place.present.reset();
        }
    }
}

void DestinationIdentifiers::allMayHaveGone() {
    for (auto& [number, place] : places_) {
        place.present.reset();
    }
}

bool DestinationIdentifiers::isThere(MidiObjectRef identifier) const {
    const auto place = places_.find(identifier & addressMask);
    return place != places_.end() && place->second.present == identifier >> countShift;
}

const SequencerPort* DestinationIdentifiers::port(MidiObjectRef identifier) const {
    const auto place = places_.find(identifier & addressMask);
    const auto count = static_cast<std::size_t>(identifier >> countShift);
    return place == places_.end() || count >= place->second.ports.size() ? nullptr
                                                                         : &place->second.ports[count];
}

} // namespace tavro::alsa
