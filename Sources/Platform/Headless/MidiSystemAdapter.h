#pragma once

#include "PlatformInterfaces/MidiSystem.h"

#include <map>
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
    bool comesLater = false;
    bool leavesUnsent = false;
    /// In order. Call `announceChange` after changing them.
    std::vector<Destination> destinations;

    /// What `listeners`, `droppedMessages` and `period` answer.
    std::optional<std::size_t> listenerCount;
    std::uint64_t dropped = 0;
    std::optional<MidiPeriod> periodInForce;
    /// Whether messages can be scheduled. They stay in `scheduled` until they are cancelled or settled.
    bool schedules = false;
    /// Makes every scheduled message one that has gone out already.
    bool isTooLateToCancel = false;

    struct Scheduled {
        Message message;
        std::chrono::nanoseconds delay;

        friend bool operator==(const Scheduled&, const Scheduled&) = default;
    };

    /// By ticket.
    std::map<MidiTicket, Scheduled> scheduled;

    /// The bytes of what was sent and scheduled in each gesture, in the order of handing over.
    std::vector<std::vector<std::vector<std::uint8_t>>> gestures;

    /// Who receives, as another process would find them.
    std::vector<std::string> receiverNames;

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

    /// What a real system does when it goes.
    void loseConnection() const;

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
    void setLossHandler(std::function<void()> onLoss) override;
    [[nodiscard]] std::optional<std::size_t> listeners(MidiObjectRef source) override;

    [[nodiscard]] std::vector<std::string> receivers(MidiObjectRef /*source*/,
                                                     MidiObjectRef /*destination*/) override {
        return receiverNames;
    }

    [[nodiscard]] std::uint64_t droppedMessages() const override { return dropped; }

    [[nodiscard]] bool hasLeftUnsent() const override { return leavesUnsent; }

    [[nodiscard]] bool mayComeLater() const override { return comesLater; }

    [[nodiscard]] std::optional<MidiPeriod> period() const override { return periodInForce; }

    void disposePort(MidiObjectRef outputPort) override;
    void disposeEndpoint(MidiObjectRef source) override;
    void disposeClient(MidiObjectRef client) override;

private:
    [[nodiscard]] MidiCreation create(std::int32_t status, std::string call);
    [[nodiscard]] const Destination* find(MidiObjectRef destination) const;
    void record(const Message& message);
    void addToGesture(std::span<const std::uint8_t> message);

    MidiObjectRef nextReference_ = 1;
    std::function<void()> onChange_;
    bool isInGesture_ = false;
    std::function<void()> onLoss_;
    MidiTicket nextTicket_ = 1;
};

} // namespace tavro::headless
