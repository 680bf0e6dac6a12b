#pragma once

#include "Concurrency/MainActor.h"
#include "Platform/Linux/Alsa/AnnounceWatch.h"
#include "Platform/Linux/Alsa/DestinationIdentifiers.h"
#include "Platform/Linux/Alsa/MessageEncoder.h"
#include "Platform/Linux/Alsa/ScheduledEvents.h"
#include "Platform/Linux/Alsa/SequencerQueue.h"
#include "PlatformInterfaces/MidiSystem.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <alsa/asoundlib.h>

namespace tavro::alsa {

/// MIDI through the kernel's sequencer. There is one client with at most one source, a port that everybody
/// may read and subscribe, and at most one output port, from which messages go straight to a destination and
/// which no other program lists. Events are delivered at once, but for those that are scheduled, which wait
/// in a queue of the sequencer. They reach a destination by a connection, which ends with it, so that nobody
/// gets them who takes its address before their time. When a receiver has no room the message is dropped and
/// counted. The main thread waits for nothing but, when a port is disposed of, a moment for what was sent
/// before to leave. What is sent to a destination that has gone goes nowhere.
///
/// A destination is a port of another client that may be written and subscribed; its number is that of
/// `DestinationIdentifiers`. Its names are told on as long as the program runs, also when it has gone. The
/// references of the client, the output port and the source are their own numbers in the sequencer.
///
/// The status of a failed creation is a negative error number: that of the sequencer (-ENOENT where the
/// kernel has none, -EACCES without the permission to open it), -EBUSY for a second object of a kind, -EINVAL
/// for a client that does not exist.
///
/// Needs Qt's event loop to hear of changes.
class MidiSystemAdapter final : public MidiSystem {
public:
    /// The actor must outlive this.
    explicit MidiSystemAdapter(MainActor& mainActor);
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

    /// Nothing when the message is more than one event, when the destination is not there, and when too many
    /// wait.
    [[nodiscard]] std::optional<MidiTicket> schedule(MidiObjectRef portOrSource, MidiObjectRef destination,
                                                     std::span<const std::uint8_t> message,
                                                     std::chrono::nanoseconds delay) override;
    [[nodiscard]] bool cancel(MidiTicket ticket) override;
    void settle(MidiTicket ticket) override;
    void disposePort(MidiObjectRef outputPort) override;
    void disposeEndpoint(MidiObjectRef source) override;
    void disposeClient(MidiObjectRef client) override;

    /// As many as there were when `onChange` was last called, or the list of destinations was asked for.
    [[nodiscard]] std::optional<std::size_t> listeners(MidiObjectRef source) override;

    [[nodiscard]] std::vector<std::string> receivers(MidiObjectRef source,
                                                     MidiObjectRef destination) override;

    /// What could not be delivered, was no MIDI message, or was scheduled for a port that was disposed of or
    /// for a destination that another one replaced.
    [[nodiscard]] std::uint64_t droppedMessages() const override;

private:
    struct Close {
        void operator()(snd_seq_t* sequencer) const { snd_seq_close(sequencer); }
    };

    [[nodiscard]] MidiObjectRef numberOf(int port) const;
    /// Connects the output port with the destination of the route. Whether it is connected.
    bool followRoute();
    [[nodiscard]] MidiCreation createPort(MidiObjectRef client, std::string_view name, unsigned capabilities,
                                          std::optional<int>& port);
    void disposePort(MidiObjectRef reference, std::optional<int>& port);
    void refresh();
    void deliver(int port, std::optional<PortAddress> destination, std::span<const std::uint8_t> message);
    /// The event goes out now, or behind what must not be overtaken. False when it does not.
    [[nodiscard]] bool goOut(snd_seq_event_t& event);
    void close();

    MainActor& mainActor_;
    MessageEncoder encoder_;
    DestinationIdentifiers identifiers_;
    std::unique_ptr<snd_seq_t, Close> sequencer_;
    std::unique_ptr<SequencerQueue> queue_;
    std::unique_ptr<ScheduledEvents> scheduled_;
    std::unique_ptr<AnnounceWatch> watch_;
    std::optional<int> outputPort_;
    std::optional<int> source_;
    /// What the output port is to be connected with.
    MidiObjectRef route_ = 0;
    std::size_t listeners_ = 0;
    std::uint64_t dropped_ = 0;
    /// As they were when their number was asked for.
    std::vector<MidiObjectRef> destinations_;
};

} // namespace tavro::alsa
