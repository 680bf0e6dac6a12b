#include "Platform/Linux/Jack/Client.h"

#include "Platform/Linux/Jack/PortNames.h"

#include <jack/metadata.h>
#include <jack/midiport.h>
#include <jack/uuid.h>

#include <utility>

namespace tavro::jack {

namespace {

void keepSilent(const char* /*text*/) {}

std::optional<std::string> prettyName(jack_port_t* port) {
    char* value = nullptr;
    char* type = nullptr;
    if (jack_get_property(jack_port_uuid(port), JACK_METADATA_PRETTY_NAME, &value, &type) != 0) {
        return std::nullopt;
    }
    std::optional<std::string> name;
    if (value != nullptr && *value != '\0') {
        name = value;
    }
    jack_free(value);
    jack_free(type);
    return name;
}

} // namespace

std::shared_ptr<Client> Client::open(const std::string& name, std::shared_ptr<GraphNotices::Line> notices,
                                     jack_status_t& status) {
    // A missing server is told by the status; libjack's own lines about it would only alarm.
    jack_set_error_function(keepSilent);
    jack_set_info_function(keepSilent);
    status = jack_status_t{};
    auto* const handle = jack_client_open(name.c_str(), JackNoStartServer, &status);
    if (handle == nullptr) {
        status = status == jack_status_t{} ? JackFailure : status;
        return nullptr;
    }
    return std::shared_ptr<Client>(new Client(*handle, std::move(notices)));
}

Client::Client(jack_client_t& handle, std::shared_ptr<GraphNotices::Line> notices)
    : handle_(&handle), writer_(handle), watch_(handle, std::move(notices)) {}

Client::~Client() {
    // Ends the server's calls, so that what they work on can go after it, and not before.
    jack_client_close(handle_);
}

Client::Port Client::registerPort(const std::string& name) {
    auto* const made = jack_port_register(handle_, name.c_str(), JACK_DEFAULT_MIDI_TYPE, JackPortIsOutput, 0);
    if (made == nullptr) {
        return {};
    }
    const Port port{.handle = made, .uuid = jack_port_uuid(made)};
    // Only for the eyes: a server without metadata shows the plain name.
    jack_set_property(handle_, port.uuid, JACK_METADATA_PRETTY_NAME, name.c_str(), "text/plain");
    return port;
}

void Client::forgetPort(const Port& port) {
    // The names outlive the server, and its successor gives the port's number to another port.
    jack_remove_property(handle_, port.uuid, JACK_METADATA_PRETTY_NAME);
}

bool Client::activate() {
    return jack_activate(handle_) == 0;
}

std::vector<Client::InputPort> Client::inputPortsOfOthers() {
    std::vector<InputPort> found;
    const PortNames names(jack_get_ports(handle_, nullptr, JACK_DEFAULT_MIDI_TYPE, JackPortIsInput));
    for (const auto* const portName : names) {
        auto* const port = jack_port_by_name(handle_, portName);
        if (port != nullptr && jack_port_is_mine(handle_, port) == 0) {
            found.push_back({.name = portName, .prettyName = prettyName(port)});
        }
    }
    return found;
}

std::chrono::milliseconds Client::patience() const {
    constexpr std::chrono::milliseconds forASilentServer{20};
    constexpr std::chrono::milliseconds usual{200};
    return writer_.isServerSilent() ? forASilentServer : usual;
}

void Client::connectOnly(jack_port_t& port, const std::string& wanted) {
    if (!isServerThere()) {
        return;
    }
    auto isThere = false;
    const PortNames connections(jack_port_get_all_connections(handle_, &port));
    for (const auto* const portName : connections) {
        if (portName == wanted) {
            isThere = true;
        } else {
            jack_disconnect(handle_, jack_port_name(&port), portName);
        }
    }
    if (!wanted.empty() && !isThere && jack_port_by_name(handle_, wanted.c_str()) != nullptr) {
        jack_connect(handle_, jack_port_name(&port), wanted.c_str());
    }
}

} // namespace tavro::jack
