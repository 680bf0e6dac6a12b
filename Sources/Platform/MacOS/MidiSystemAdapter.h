#pragma once

#include "PlatformInterfaces/MidiSystem.h"

namespace tavro::macos {

/// CoreMIDI. The references are CoreMIDI's own, and so are the status numbers. Notices come on the run loop
/// of the thread that creates the client, which must be the main one.
class MidiSystemAdapter final : public MidiSystem {
public:
    [[nodiscard]] MidiCreation createClient(std::string_view name, std::function<void()> onChange) override;
    [[nodiscard]] MidiCreation createOutputPort(MidiObjectRef client, std::string_view name) override;
    [[nodiscard]] MidiCreation createSource(MidiObjectRef client, std::string_view name) override;
    [[nodiscard]] std::size_t numberOfDestinations() override;
    [[nodiscard]] MidiObjectRef destination(std::size_t index) override;
    [[nodiscard]] std::optional<std::string> displayName(MidiObjectRef destination) override;
    [[nodiscard]] std::optional<std::string> name(MidiObjectRef destination) override;
    /// Nothing: CoreMIDI needs no connection before a message.
    void prepareRoute(MidiObjectRef outputPort, MidiObjectRef destination) override;
    void send(MidiObjectRef outputPort, MidiObjectRef destination,
              std::span<const std::uint8_t> message) override;
    void received(MidiObjectRef source, std::span<const std::uint8_t> message) override;
    void disposePort(MidiObjectRef outputPort) override;
    void disposeEndpoint(MidiObjectRef source) override;
    void disposeClient(MidiObjectRef client) override;
};

} // namespace tavro::macos
