#pragma once

#include "Platform/Linux/Jack/GraphWatch.h"
#include "Platform/Linux/Jack/PortWriter.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <jack/jack.h>

namespace tavro::jack {

/// A client of a running server. Opening, closing and what changes the graph wait for the server's answer,
/// and are to be called on one thread; the rest is for the main thread.
class Client {
public:
    /// Null, and the server's answer in `status`, when there can be none. Never starts a server. The client
    /// is to get its ports and then to be activated.
    [[nodiscard]] static std::shared_ptr<Client>
    open(const std::string& name, std::shared_ptr<GraphNotices::Line> notices, jack_status_t& status);

    ~Client();
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    struct Port {
        jack_port_t* handle = nullptr;
        jack_uuid_t uuid = 0;
    };

    /// A port from which messages go, with its name for people too. Null when the server refuses.
    [[nodiscard]] Port registerPort(const std::string& name);

    /// Takes the port's name for people back. The port itself stays until the client is closed: libjack walks
    /// through its list of ports on a thread of its own, whenever the server tells of latencies, and would
    /// crash over one that goes meanwhile. For the same reason ports are made before the client is active.
    void forgetPort(const Port& port);

    /// From now on the server calls it. False when the server refuses.
    [[nodiscard]] bool activate();

    /// Connects the port to the input port of this name, if that is there, and to nothing else; empty is
    /// none.
    void connectOnly(jack_port_t& port, const std::string& wanted);

    /// A port of another client that takes MIDI.
    struct InputPort {
        std::string name;
        std::optional<std::string> prettyName;
    };

    [[nodiscard]] std::vector<InputPort> inputPortsOfOthers();

    /// How long to wait for the server, which may have shown that it does not answer. Main thread.
    [[nodiscard]] std::chrono::milliseconds patience() const;

    [[nodiscard]] jack_client_t& handle() const { return *handle_; }

    [[nodiscard]] PortWriter& writer() { return writer_; }

    /// False once the server has gone or has thrown the client out. Any thread.
    [[nodiscard]] bool isServerThere() const { return watch_.isServerThere(); }

private:
    Client(jack_client_t& handle, std::shared_ptr<GraphNotices::Line> notices);

    jack_client_t* handle_;
    PortWriter writer_;
    GraphWatch watch_;
};

} // namespace tavro::jack
