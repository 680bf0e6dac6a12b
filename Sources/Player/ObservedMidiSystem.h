#pragma once

#include "PlatformInterfaces/MidiSystem.h"

#include <cstdint>
#include <map>
#include <vector>

namespace tavro {

/// Passes everything on to another MIDI system, and tells what is sent: a message that was handed over ahead
/// of its time when that has come, so that the order is the one in which everything goes out.
class ObservedMidiSystem final : public MidiSystem {
public:
    /// The system must outlive this.
    explicit ObservedMidiSystem(MidiSystem& system) : system_(system) {}

    /// Called for each message, after it was passed on.
    std::function<void(std::span<const std::uint8_t>)> onMessage;
    /// Called when the connection to the system ends by itself, before the program deals with it.
    std::function<void()> onLoss;
    /// Whether a message may be handed over this long before its time. Empty: always.
    std::function<bool(std::chrono::nanoseconds)> mayGoAhead;

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
    void beginGesture() override;
    void endGesture() override;
    [[nodiscard]] std::optional<MidiTicket> schedule(MidiObjectRef portOrSource, MidiObjectRef destination,
                                                     std::span<const std::uint8_t> message,
                                                     std::chrono::nanoseconds delay) override;
    [[nodiscard]] bool cancel(MidiTicket ticket) override;
    void settle(MidiTicket ticket) override;
    void setLossHandler(std::function<void()> handler) override;
    [[nodiscard]] std::optional<std::size_t> listeners(MidiObjectRef source) override;
    [[nodiscard]] std::vector<std::string> receivers(MidiObjectRef source,
                                                     MidiObjectRef destination) override;
    [[nodiscard]] std::uint64_t droppedMessages() const override;

    [[nodiscard]] bool hasLeftUnsent() const override { return system_.hasLeftUnsent(); }

    void disposePort(MidiObjectRef outputPort) override;
    void disposeEndpoint(MidiObjectRef source) override;
    void disposeClient(MidiObjectRef client) override;

private:
    void tell(std::span<const std::uint8_t> message) const;
    void tellScheduled(MidiTicket ticket);

    MidiSystem& system_;
    /// Handed over, and not yet due.
    std::map<MidiTicket, std::vector<std::uint8_t>> scheduled_;
};

} // namespace tavro
