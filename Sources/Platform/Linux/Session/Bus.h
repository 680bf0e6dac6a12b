#pragma once

#include <QSocketNotifier>
#include <QTimer>

#include <functional>
#include <memory>
#include <string>

#include <systemd/sd-bus.h>

namespace tavro::linuxos {

/// A connection to a message bus that is made, kept and made anew without ever waiting for the other side:
/// neither a bus nor a service that does not answer holds the caller up. Main thread only.
class Bus {
public:
    enum class Kind { system, session };

    /// Takes a signal, or the answer to a call, which may be an error.
    using Handler = std::function<void(sd_bus_message& message)>;

    struct Method {
        const char* service;
        const char* path;
        const char* interface;
        const char* name;
    };

    explicit Bus(Kind kind);
    ~Bus();
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;

    /// A connection was begun: nothing of an earlier one holds. Here, and where something is handed over,
    /// signals and calls may be asked for.
    std::function<void()> onBegin;
    /// The connection is lost. Another one will be tried in a while.
    std::function<void()> onLost;

    /// Makes the connection, and others after it is lost.
    void open();

    /// Hands over every signal that the rule matches, until the connection is lost.
    void subscribe(const std::string& rule, Handler handler);

    /// Tells whenever the service gets an owner or loses it, until the connection is lost.
    void watchService(const std::string& service, std::function<void(bool isThere)> handler);

    /// Calls a method, with arguments as sd_bus_message_append takes them. Starts no service that does not
    /// run. The answer is handed over, or an error after a long time without one; nothing when the connection
    /// is lost.
    template <typename... Arguments>
    void call(const Method& method, Handler handler, const char* types = "", Arguments... arguments) {
        if (auto* const message = makeCall(method)) {
            if (*types == '\0' || sd_bus_message_append(message, types, arguments...) >= 0) {
                send(message, std::move(handler));
            }
            sd_bus_message_unref(message);
        }
    }

private:
    [[nodiscard]] sd_bus_message* makeCall(const Method& method) const;
    void send(sd_bus_message* message, Handler handler);
    void keep(sd_bus_slot* slot, std::unique_ptr<Handler> handler);
    void process();
    void wait();
    void stopWaiting();
    void lose();
    void close();

    const Kind kind_;
    sd_bus* bus_ = nullptr;
    std::unique_ptr<QSocketNotifier> readable_;
    std::unique_ptr<QSocketNotifier> writable_;
    /// Until the bus has something to do by itself, or is opened again.
    QTimer timer_;
};

} // namespace tavro::linuxos
