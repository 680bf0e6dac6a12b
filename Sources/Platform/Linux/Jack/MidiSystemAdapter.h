#pragma once

#include "Concurrency/MainActor.h"
#include "Platform/Linux/Jack/Client.h"
#include "Platform/Linux/Jack/ClientOpening.h"
#include "Platform/Linux/Jack/DestinationIdentifiers.h"
#include "Platform/Linux/Jack/GraphWatch.h"
#include "Platform/Linux/Jack/OutputConnection.h"
#include "Platform/Linux/Jack/PortWriter.h"
#include "Platform/Linux/Jack/ServerCalls.h"
#include "PlatformInterfaces/MidiSystem.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <jack/jack.h>

namespace tavro::jack {

/// MIDI through a JACK server (or PipeWire's stand-in for one) that is already running; none is ever
/// started. There is one client with at most one source and one output port. It is active when the source is
/// made, so that this comes last, and its ports go with it. The source is a port that everybody may connect;
/// the output port is connected to the destination of its route and to nothing else, which is put right again
/// whenever the graph changes.
///
/// A destination is a MIDI input port of another client. Its number stays with its name while the program
/// runs, so a route to a port that is gone works again when the port returns.
///
/// The status of a failed creation is the negated jack_status_t bits: those of the server's answer for a
/// client, the bit of a general failure (-1) for a port that the server refused, for a second object of a
/// kind and for a client that does not exist.
///
/// What the server has to answer is asked on a thread beside, and waited for only so long: a server that does
/// not answer holds up nobody. Then the creation of a client fails with the bits of JackServerError and is
/// continued by the next attempt, a list of destinations is the one from before, and what was to be closed
/// stays with the server.
///
/// What is sent to a destination before its connection is in force waits for that, a tenth of a second at
/// most; what has waited in vain counts as dropped.
///
/// A scheduled message goes out one period after its time, as everything does, and exactly to the frame; when
/// its gesture comes late, as a whole, by the same.
/// What is scheduled when its port is disposed or its route changes is taken back and counted as dropped.
///
/// When the server goes or throws the client out, destinations become empty, sending does nothing, and the
/// change is announced before the loss. Once the client is disposed a new one can be made as soon as a
/// server is there.
class MidiSystemAdapter final : public MidiSystem {
public:
    /// The actor must outlive this.
    explicit MidiSystemAdapter(MainActor& mainActor, const MidiSystemOptions& options = {});
    ~MidiSystemAdapter() override;

    [[nodiscard]] MidiCreation createClient(std::string_view name, std::function<void()> onChange) override;

    [[nodiscard]] bool mayComeLater() const override { return true; }

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

    void beginGesture() override;
    void endGesture() override;
    [[nodiscard]] std::optional<MidiTicket> schedule(MidiObjectRef portOrSource, MidiObjectRef destination,
                                                     std::span<const std::uint8_t> message,
                                                     std::chrono::nanoseconds delay) override;
    [[nodiscard]] bool cancel(MidiTicket ticket) override;
    void settle(MidiTicket ticket) override;
    void setLossHandler(std::function<void()> onLoss) override;
    [[nodiscard]] std::optional<std::size_t> listeners(MidiObjectRef source) override;

    [[nodiscard]] std::vector<std::string> receivers(MidiObjectRef source,
                                                     MidiObjectRef destination) override;

    [[nodiscard]] std::optional<MidiPeriod> period() const override;

    /// These two return once what was sent before has gone over the wire, or after a bounded wait.
    void disposePort(MidiObjectRef outputPort) override;
    void disposeEndpoint(MidiObjectRef source) override;

    void disposeClient(MidiObjectRef client) override;

    [[nodiscard]] bool hasLeftUnsent() const override { return hasLeftUnsent_; }

    /// How many messages were accepted and could not be brought to a port. Those that were on their way when
    /// the server went are not among them: the loss tells of them.
    [[nodiscard]] std::uint64_t droppedMessages() const override;

private:
    struct OwnPort {
        Client::Port port;
        std::string name;
    };

    struct Destination {
        MidiObjectRef identifier;
        std::optional<std::string> displayName;
    };

    [[nodiscard]] bool isConnected() const;
    /// The server's graph is another one, or an answer has come late.
    void followChange();
    [[nodiscard]] MidiCreation createPort(MidiObjectRef client, std::string_view name, PortWriter::Port kind,
                                          OwnPort& own);
    void disposePort(PortWriter::Port kind, OwnPort& own);
    /// False when the server refuses or does not answer.
    [[nodiscard]] bool activate();

    MainActor& mainActor_;
    MidiSystemOptions options_;
    std::function<void()> onLoss_;
    std::function<void()> onChange_;
    std::shared_ptr<const bool> life_ = std::make_shared<const bool>(true);
    ServerCalls calls_;
    std::unique_ptr<ClientOpening> opening_;
    std::unique_ptr<GraphNotices> notices_;
    std::shared_ptr<Client> client_;
    OwnPort outputPort_;
    OwnPort source_;
    MidiObjectRef route_ = 0;
    OutputConnection connection_{mainActor_, calls_};
    bool hasLeftUnsent_ = false;
    /// By the clients that are disposed.
    std::uint64_t droppedBefore_ = 0;
    DestinationIdentifiers identifiers_;
    /// As they were when their number was asked for.
    std::vector<Destination> destinations_;
};

} // namespace tavro::jack
