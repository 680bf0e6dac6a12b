#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tavro {

/// Names a client, a port or an endpoint of a MIDI system; 0 is none.
using MidiObjectRef = std::uint32_t;

/// How a creation ended: `status` is 0 and `reference` is set, or the platform's own error number stands in
/// `status` and `reference` is 0.
struct MidiCreation {
    std::int32_t status = 0;
    MidiObjectRef reference = 0;
};

/// What a platform offers for sending MIDI. An adapter translates calls and events and decides nothing.
/// Main thread only; an adapter whose platform calls back on other threads brings the calls over.
class MidiSystem {
public:
    MidiSystem() = default;
    MidiSystem(const MidiSystem&) = delete;
    MidiSystem& operator=(const MidiSystem&) = delete;
    virtual ~MidiSystem() = default;

    /// Makes the program known to the MIDI system. `onChange` is called on the main thread whenever
    /// something about the system's clients, ports or names may have changed, until the client is disposed.
    [[nodiscard]] virtual MidiCreation createClient(std::string_view name,
                                                    std::function<void()> onChange) = 0;

    /// A port from which messages are sent to chosen destinations.
    [[nodiscard]] virtual MidiCreation createOutputPort(MidiObjectRef client, std::string_view name) = 0;

    /// A source that other programs see and listen to.
    [[nodiscard]] virtual MidiCreation createSource(MidiObjectRef client, std::string_view name) = 0;

    /// How many destinations the system has at the moment; the program's own source is none.
    [[nodiscard]] virtual std::size_t numberOfDestinations() = 0;

    /// The destination at an index, in the system's order; 0 when there is none (any more).
    [[nodiscard]] virtual MidiObjectRef destination(std::size_t index) = 0;

    /// The name made for people, and the plain name. Nothing when the system does not tell.
    [[nodiscard]] virtual std::optional<std::string> displayName(MidiObjectRef destination) = 0;
    [[nodiscard]] virtual std::optional<std::string> name(MidiObjectRef destination) = 0;

    /// Tells that the next messages of the port go to this destination, or to none for 0, so that a system
    /// which works by connections can make the connection before the first note.
    virtual void prepareRoute(MidiObjectRef outputPort, MidiObjectRef destination) = 0;

    /// Sends one message now, from the port to the destination. A destination that is gone drops it.
    virtual void send(MidiObjectRef outputPort, MidiObjectRef destination,
                      std::span<const std::uint8_t> message) = 0;

    /// Makes one message appear now at the source, for everybody who listens to it.
    virtual void received(MidiObjectRef source, std::span<const std::uint8_t> message) = 0;

    virtual void disposePort(MidiObjectRef outputPort) = 0;
    virtual void disposeEndpoint(MidiObjectRef source) = 0;
    virtual void disposeClient(MidiObjectRef client) = 0;
};

} // namespace tavro
