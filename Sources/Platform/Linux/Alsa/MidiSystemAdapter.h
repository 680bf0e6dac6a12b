#pragma once

#include "Concurrency/MainActor.h"
#include "Platform/Linux/Alsa/AnnounceWatch.h"
#include "Platform/Linux/Alsa/DestinationIdentifiers.h"
#include "Platform/Linux/Alsa/MessageEncoder.h"
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
/// which no other program lists. Events are delivered at once and are not queued; when a receiver has no
/// room the message is dropped and counted, and the main thread never waits. What is sent to a destination
/// that has gone goes nowhere.
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
    void disposePort(MidiObjectRef outputPort) override;
    void disposeEndpoint(MidiObjectRef source) override;
    void disposeClient(MidiObjectRef client) override;

    /// As many as there were when `onChange` was last called, or the list of destinations was asked for.
    [[nodiscard]] std::optional<std::size_t> listeners(MidiObjectRef source) override;

    [[nodiscard]] std::vector<std::string> receivers(MidiObjectRef source,
                                                     MidiObjectRef destination) override;

    /// What could not be delivered or was no MIDI message.
    [[nodiscard]] std::uint64_t droppedMessages() const override { return dropped_; }

private:
    struct Close {
        void operator()(snd_seq_t* sequencer) const { snd_seq_close(sequencer); }
    };

    [[nodiscard]] MidiObjectRef numberOf(int port) const;
    [[nodiscard]] MidiCreation createPort(MidiObjectRef client, std::string_view name, unsigned capabilities,
                                          std::optional<int>& port);
    void disposePort(MidiObjectRef reference, std::optional<int>& port);
    void refresh();
    void deliver(int port, std::optional<PortAddress> destination, std::span<const std::uint8_t> message);

    MainActor& mainActor_;
    MessageEncoder encoder_;
    DestinationIdentifiers identifiers_;
    std::unique_ptr<snd_seq_t, Close> sequencer_;
    std::unique_ptr<AnnounceWatch> watch_;
    std::optional<int> outputPort_;
    std::optional<int> source_;
    std::size_t listeners_ = 0;
    std::uint64_t dropped_ = 0;
    /// As they were when their number was asked for.
    std::vector<MidiObjectRef> destinations_;
};

} // namespace tavro::alsa
