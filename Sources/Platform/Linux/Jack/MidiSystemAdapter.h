#pragma once

#include "Concurrency/MainActor.h"
#include "MidiOutput/MidiSystem.h"
#include "Platform/Linux/Jack/DestinationIdentifiers.h"
#include "Platform/Linux/Jack/GraphWatch.h"
#include "Platform/Linux/Jack/PortWriter.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <jack/jack.h>

namespace tavro::jack {

/// MIDI through a JACK server (or PipeWire's stand-in for one) that is already running; none is ever
/// started. There is one client with at most one source and one output port. The source is a port that
/// everybody may connect; the output port is connected to the destination of its route and to nothing else,
/// which is put right again whenever the graph changes.
///
/// A destination is a MIDI input port of another client. Its number stays with its name while the program
/// runs, so a route to a port that is gone works again when the port returns.
///
/// The status of a failed creation is the negated jack_status_t bits: those of the server's answer for a
/// client, the bit of a general failure (-1) for a port that the server refused, for a second object of a
/// kind and for a client that does not exist.
///
/// When the server goes, destinations become empty, sending does nothing, and the change is announced.
class MidiSystemAdapter final : public MidiSystem {
public:
    /// The actor must outlive this.
    explicit MidiSystemAdapter(MainActor& mainActor);
    ~MidiSystemAdapter() override;

    [[nodiscard]] MidiCreation createClient(std::string_view name, std::function<void()> onChange) override;
    [[nodiscard]] MidiCreation createOutputPort(MidiObjectRef client, std::string_view name) override;
    [[nodiscard]] MidiCreation createSource(MidiObjectRef client, std::string_view name) override;
    [[nodiscard]] std::size_t numberOfDestinations() override;
    [[nodiscard]] MidiObjectRef destination(std::size_t index) override;
    [[nodiscard]] std::optional<std::string> displayName(MidiObjectRef destination) override;
    [[nodiscard]] std::optional<std::string> name(MidiObjectRef destination) override;
    void prepareRoute(MidiObjectRef outputPort, MidiObjectRef destination) override;
    void send(MidiObjectRef outputPort, MidiObjectRef destination,
              std::span<const std::uint8_t> message) override;
    void received(MidiObjectRef source, std::span<const std::uint8_t> message) override;

    /// These two return once what was sent before has gone over the wire, or after a bounded wait.
    void disposePort(MidiObjectRef outputPort) override;
    void disposeEndpoint(MidiObjectRef source) override;

    void disposeClient(MidiObjectRef client) override;

    /// How many messages were accepted and could not be brought to a port, since the client was created.
    [[nodiscard]] std::uint64_t droppedMessages() const override;

private:
    [[nodiscard]] bool isConnected() const;
    [[nodiscard]] MidiCreation createPort(MidiObjectRef client, std::string_view name, PortWriter::Port kind,
                                          jack_port_t*& port);
    void disposePort(PortWriter::Port kind, jack_port_t*& port);
    void followRoute();

    MainActor& mainActor_;
    jack_client_t* client_ = nullptr;
    std::unique_ptr<PortWriter> writer_;
    std::unique_ptr<GraphWatch> watch_;
    jack_port_t* outputPort_ = nullptr;
    jack_port_t* source_ = nullptr;
    MidiObjectRef route_ = 0;
    DestinationIdentifiers identifiers_;
    /// As they were when their number was asked for.
    std::vector<MidiObjectRef> destinations_;
};

} // namespace tavro::jack
