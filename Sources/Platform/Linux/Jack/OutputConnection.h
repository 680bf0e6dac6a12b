#pragma once

#include "Concurrency/MainActor.h"
#include "Platform/Linux/Jack/Client.h"
#include "Platform/Linux/Jack/ServerCalls.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tavro::jack {

/// The connection of the output port to its one destination, and to nothing else. What is sent before it is
/// in force waits for it, a tenth of a second at most. Main thread only.
class OutputConnection {
public:
    /// Both must outlive this.
    OutputConnection(MainActor& mainActor, ServerCalls& calls) : mainActor_(mainActor), calls_(calls) {}

    /// The port that is connected from now on.
    void open(std::shared_ptr<Client> client, jack_port_t& port);

    /// No port any more, and no destination. What waits is lost.
    void close();

    /// Another destination, by its port's name; empty is none. What waits for the one before is lost.
    void leadTo(const std::string& destination);

    /// The graph has changed: puts the connection right again.
    void follow();

    /// Whether what is sent waits.
    [[nodiscard]] bool isAwaited() const { return deadline_.has_value(); }

    /// Sends one message, now or when the connection is in force.
    void send(std::span<const std::uint8_t> message);

    /// How many messages have waited in vain.
    [[nodiscard]] std::uint64_t droppedMessages() const { return dropped_; }

private:
    [[nodiscard]] bool isInForce() const;
    void look();
    void sendWaiting();
    void dropWaiting();

    MainActor& mainActor_;
    ServerCalls& calls_;
    std::shared_ptr<Client> client_;
    jack_port_t* port_ = nullptr;
    std::string destination_;
    /// Until when messages wait.
    std::optional<std::chrono::nanoseconds> deadline_;
    std::vector<std::vector<std::uint8_t>> waiting_;
    ScheduledTask nextLook_;
    std::uint64_t dropped_ = 0;
};

} // namespace tavro::jack
