#pragma once

#include "PlatformInterfaces/MidiSystem.h"

#include <utility>

namespace tavro::bench {

/// A MIDI system whose exact scheduling can be switched off, so that its user falls back on timers of the
/// main thread. Everything else is handed on.
class SwitchableScheduling final : public MidiSystem {
public:
    /// The inner one must outlive this.
    explicit SwitchableScheduling(MidiSystem& inner) : inner_(inner) {}

    void setExact(bool isExact) { isExact_ = isExact; }

    /// How many messages the inner one was asked to schedule and would not.
    [[nodiscard]] unsigned refusals() const { return refusals_; }

    void beginGesture() override { inner_.beginGesture(); }

    void endGesture() override { inner_.endGesture(); }

    std::optional<MidiTicket> schedule(MidiObjectRef portOrSource, MidiObjectRef destination,
                                       std::span<const std::uint8_t> message,
                                       std::chrono::nanoseconds delay) override {
        if (!isExact_) {
            return std::nullopt;
        }
        const auto ticket = inner_.schedule(portOrSource, destination, message, delay);
        refusals_ += ticket ? 0U : 1U;
        return ticket;
    }

    MidiCreation createClient(std::string_view name, std::function<void()> onChange) override {
        return inner_.createClient(name, std::move(onChange));
    }

    MidiCreation createOutputPort(MidiObjectRef client, std::string_view name) override {
        return inner_.createOutputPort(client, name);
    }

    MidiCreation createSource(MidiObjectRef client, std::string_view name) override {
        return inner_.createSource(client, name);
    }

    std::size_t numberOfDestinations() override { return inner_.numberOfDestinations(); }

    MidiObjectRef destination(std::size_t index) override { return inner_.destination(index); }

    std::optional<std::string> displayName(MidiObjectRef destination) override {
        return inner_.displayName(destination);
    }

    std::optional<std::string> name(MidiObjectRef destination) override { return inner_.name(destination); }

    void prepareRoute(MidiObjectRef outputPort, MidiObjectRef destination) override {
        inner_.prepareRoute(outputPort, destination);
    }

    void send(MidiObjectRef outputPort, MidiObjectRef destination,
              std::span<const std::uint8_t> message) override {
        inner_.send(outputPort, destination, message);
    }

    void received(MidiObjectRef source, std::span<const std::uint8_t> message) override {
        inner_.received(source, message);
    }

    bool cancel(MidiTicket ticket) override { return inner_.cancel(ticket); }

    void settle(MidiTicket ticket) override { inner_.settle(ticket); }

    void setLossHandler(std::function<void()> onLoss) override { inner_.setLossHandler(std::move(onLoss)); }

    std::optional<std::size_t> listeners(MidiObjectRef source) override { return inner_.listeners(source); }

    [[nodiscard]] std::uint64_t droppedMessages() const override { return inner_.droppedMessages(); }

    void disposePort(MidiObjectRef outputPort) override { inner_.disposePort(outputPort); }

    void disposeEndpoint(MidiObjectRef source) override { inner_.disposeEndpoint(source); }

    void disposeClient(MidiObjectRef client) override { inner_.disposeClient(client); }

private:
    MidiSystem& inner_;
    bool isExact_ = true;
    unsigned refusals_ = 0;
};

} // namespace tavro::bench
