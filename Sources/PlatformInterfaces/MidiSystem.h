#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tavro {

/// Names a client, a port or an endpoint of a MIDI system; 0 is none.
using MidiObjectRef = std::uint32_t;

/// How a creation ended: `status` is 0 and `reference` is set, or the platform's own error number stands in
/// `status` and `reference` is 0.
struct MidiCreation {
    std::int32_t status = 0;
    MidiObjectRef reference = 0;
};

/// The piece of time in which a system works that has periods.
struct MidiPeriod {
    std::uint32_t frames;
    /// Frames a second.
    std::uint32_t rate;

    friend bool operator==(const MidiPeriod&, const MidiPeriod&) = default;
};

/// Names a message that waits inside a MIDI system for its time.
using MidiTicket = std::uint32_t;

/// How a system is to be used, where it leaves the choice to its programs.
struct MidiSystemOptions {
    /// Whether to ask for a short period. Only where a system works in periods and lets programs ask.
    bool asksForShortPeriod = true;
    /// How long the main thread waits at most until a client is created, where that can take long.
    std::chrono::milliseconds patience{300};
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

    /// Whether a client that could not be created may be possible later without anything the program does:
    /// where servers come and go, it is worth trying again.
    [[nodiscard]] virtual bool mayComeLater() const;

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

    /// What is sent and scheduled between these two is one gesture, as the notes of a strum are: the delays
    /// of all of it count from one moment, the one at which its first message really goes out where the
    /// system can tell. It may leave no sooner than at the end. A gesture follows another, never lies inside
    /// it.
    virtual void beginGesture();
    virtual void endGesture();

    /// Takes one message that is to go out like `send` or `received` does (`destination` is 0 for the
    /// source), but after a delay, and so exactly that the main thread could not do it. Nothing, and nothing
    /// happens, when the system cannot do this, or not at the moment.
    [[nodiscard]] virtual std::optional<MidiTicket> schedule(MidiObjectRef portOrSource,
                                                             MidiObjectRef destination,
                                                             std::span<const std::uint8_t> message,
                                                             std::chrono::nanoseconds delay);

    /// Takes a scheduled message back. False when it is too late: the message has gone out.
    [[nodiscard]] virtual bool cancel(MidiTicket ticket);

    /// Tells that a scheduled message's time has come: what is sent from now on goes out after it. The ticket
    /// must not be used again.
    virtual void settle(MidiTicket ticket);

    /// Names what is to be done, on the main thread, when the connection to the system ends by itself. All
    /// references are void then; they may still be disposed. Systems that cannot be lost never do it.
    virtual void setLossHandler(std::function<void()> onLoss);

    /// How many receivers listen to the source; nothing when the system cannot know. `onChange` tells
    /// changes.
    [[nodiscard]] virtual std::optional<std::size_t> listeners(MidiObjectRef source);

    /// Those whom messages reach: who listens to the source, and the destination, unless that is 0. In words
    /// by which another process of this system finds them ("jack synth:midi_in", "alsa 128:0");
    /// empty when there are none, and where no other process could. `onChange` tells changes.
    [[nodiscard]] virtual std::vector<std::string> receivers(MidiObjectRef source, MidiObjectRef destination);

    /// The period in force; nothing in a system that has none, and without a client. `onChange` tells
    /// changes.
    [[nodiscard]] virtual std::optional<MidiPeriod> period() const;

    /// How many messages were accepted and lost, since the beginning.
    [[nodiscard]] virtual std::uint64_t droppedMessages() const;

    /// Whether something that was sent had not left when its port was disposed, because the system did not
    /// answer any more.
    [[nodiscard]] virtual bool hasLeftUnsent() const;

    virtual void disposePort(MidiObjectRef outputPort) = 0;
    virtual void disposeEndpoint(MidiObjectRef source) = 0;
    virtual void disposeClient(MidiObjectRef client) = 0;
};

} // namespace tavro
