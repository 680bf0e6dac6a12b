#pragma once

#include "MidiOutput/MidiSystem.h"

#include <string>
#include <vector>

namespace tavro::headless {

/// A MIDI system that reaches nobody and records what it is asked. What it shall answer is set in its fields.
class MidiSystemAdapter final : public MidiSystem {
public:
    struct Destination {
        MidiObjectRef reference;
        std::optional<std::string> displayName;
        std::optional<std::string> name;
    };

    struct Message {
        /// True: appeared at a source. False: sent from a port to a destination.
        bool isFromSource;
        /// The source, or the destination.
        MidiObjectRef endpoint;
        std::vector<std::uint8_t> bytes;

        friend bool operator==(const Message&, const Message&) = default;
    };

    /// What the creations answer; 0 succeeds.
    std::int32_t clientStatus = 0;
    std::int32_t portStatus = 0;
    std::int32_t sourceStatus = 0;
    /// In order. Call `announceChange` after changing them.
    std::vector<Destination> destinations;

    /// Called for each message, after it was recorded.
    std::function<void(const Message&)> onMessage;
    /// False keeps `messages` empty, for a listener that takes them by `onMessage`.
    bool recordsMessages = true;

    /// Everything that was sent, in order.
    std::vector<Message> messages;
    /// Every other call in order, as words: "client TAVRO", "dispose port 2", ...
    std::vector<std::string> calls;

    /// What a real system does when something about its ports changed.
    void announceChange() const;

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
    void disposePort(MidiObjectRef outputPort) override;
    void disposeEndpoint(MidiObjectRef source) override;
    void disposeClient(MidiObjectRef client) override;

private:
    [[nodiscard]] MidiCreation create(std::int32_t status, std::string call);
    [[nodiscard]] const Destination* find(MidiObjectRef destination) const;
    void record(const Message& message);

    MidiObjectRef nextReference_ = 1;
    std::function<void()> onChange_;
};

} // namespace tavro::headless
