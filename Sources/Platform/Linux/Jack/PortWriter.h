#pragma once

#include "Platform/Linux/Jack/MessageHandover.h"
#include "Platform/Linux/Jack/MessageMerge.h"
#include "Platform/Linux/Jack/MessageRing.h"
#include "Platform/Linux/Jack/ScheduledMessages.h"
#include "PlatformInterfaces/MidiSystem.h"

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>

#include <jack/jack.h>

namespace tavro::jack {

/// Brings messages from the main thread to the client's ports, each one period after it was sent. The part
/// in the server's thread allocates nothing, locks nothing and calls no system. Main thread only, but for
/// `process` and the counts.
class PortWriter {
public:
    enum class Port : std::uint16_t { source, output };

    /// Becomes the process callback of a client that is not active yet and must be closed before this is
    /// destroyed.
    explicit PortWriter(jack_client_t& client);

    PortWriter(const PortWriter&) = delete;
    PortWriter& operator=(const PortWriter&) = delete;
    ~PortWriter() = default;

    /// From the next period on, messages for this port go here.
    void attach(Port port, jack_port_t& target);

    /// Waits until everything sent and settled before has gone over the wire: only while periods go on, no
    /// longer than a few of them and a quarter of a second, and only while `isServerThere` answers true.
    void finishSending(const std::function<bool()>& isServerThere);

    /// Whether no period has come since one was waited for in vain.
    [[nodiscard]] bool isServerSilent() const;

    /// Whether something that was sent did not come to its port, or has not yet: at the end it never will.
    [[nodiscard]] bool hasLeftUnsent() { return !isAllTaken() || lostAtPorts_.load() != 0; }

    /// Gives up what is scheduled for the port, finishes sending, then gives the port up: once this returns
    /// it can be unregistered.
    void detach(Port port, const std::function<bool()>& isServerThere);

    /// What is sent and scheduled between these two is one gesture of the moment at which it began, and
    /// leaves when it has ended. What comes outside of them is a gesture each. They may be nested: the outer
    /// ones count.
    void beginGesture();
    void endGesture();

    /// Sends one message now. One for a port that is not attached is ignored.
    void send(Port port, std::span<const std::uint8_t> message);

    /// Sends one message after a delay, exactly to the frame, counted from where the gesture really comes.
    /// Nothing when it is empty or longer than `ScheduledMessages::longestMessage`, when too many wait, when
    /// the delay is of hours, and when the port is not attached.
    [[nodiscard]] std::optional<MidiTicket> schedule(Port port, std::span<const std::uint8_t> message,
                                                     std::chrono::nanoseconds delay);

    /// Takes a scheduled message back. False when the server's thread has taken it: then what is sent from
    /// now on goes out after it.
    [[nodiscard]] bool cancel(MidiTicket ticket);

    /// What is sent from now on goes out after the scheduled message.
    void settle(MidiTicket ticket);

    /// Takes back what is scheduled for the port and not settled, and counts it as lost.
    void giveUpScheduled(Port port);

    /// How many messages were lost because the ring was full, they were no message (empty or longer than
    /// `MessageRing::longestMessage`), or their port was given up. Any thread.
    [[nodiscard]] std::uint64_t droppedMessages() const { return dropped_.load(std::memory_order_relaxed); }

private:
    static constexpr std::size_t ringBytes = 16384;

    /// Whether the server's thread has taken everything sent and settled.
    [[nodiscard]] bool isAllTaken();
    int process(jack_nframes_t frames);
    void waitFor(const std::function<bool()>& condition, const std::function<bool()>& isServerThere);
    void waitForPeriod(std::uint64_t count, const std::function<bool()>& isServerThere);

    jack_client_t& client_;
    MessageRing ring_{ringBytes};
    ScheduledMessages scheduled_;
    MessageHandover handover_{ring_, scheduled_};
    MessageMerge merge_{ring_, scheduled_};
    /// How many gestures have begun and not ended.
    unsigned depth_ = 0;
    std::array<std::atomic<jack_port_t*>, PeriodTarget::portCount> ports_{};
    std::atomic<std::uint64_t> finishedPeriods_ = 0;
    /// The count of finished periods when the last message was sent.
    std::uint64_t lastSend_ = 0;
    /// The same when a period was waited for in vain.
    std::optional<std::uint64_t> silentSince_;
    std::atomic<std::uint64_t> dropped_ = 0;
    /// Of these, what came to a port that was given up.
    std::atomic<std::uint64_t> lostAtPorts_ = 0;
};

} // namespace tavro::jack
