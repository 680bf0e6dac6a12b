#include "Platform/Linux/Jack/MidiSystemAdapter.h"

#include "Platform/Linux/Jack/PortNames.h"

#include <jack/metadata.h>
#include <jack/midiport.h>
#include <jack/uuid.h>

#include <algorithm>
#include <utility>

namespace tavro::jack {

namespace {

// One object of each kind, so the kind names it.
constexpr MidiObjectRef clientReference = 1;
constexpr MidiObjectRef outputPortReference = 2;
constexpr MidiObjectRef sourceReference = 3;

MidiCreation failure(jack_status_t status) {
    return {.status = -static_cast<std::int32_t>(status), .reference = 0};
}

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

MidiSystemAdapter::MidiSystemAdapter(MainActor& mainActor) : mainActor_(mainActor) {}

MidiSystemAdapter::~MidiSystemAdapter() {
    disposePort(outputPortReference);
    disposeEndpoint(sourceReference);
    disposeClient(clientReference);
}

MidiCreation MidiSystemAdapter::createClient(std::string_view name, std::function<void()> onChange) {
    if (client_ != nullptr) {
        return failure(JackFailure);
    }
    // A missing server is told by the status; libjack's own lines about it would only alarm.
    jack_set_error_function(keepSilent);
    jack_set_info_function(keepSilent);

    auto status = jack_status_t{};
    client_ = jack_client_open(std::string(name).c_str(), JackNoStartServer, &status);
    if (client_ == nullptr) {
        return failure(status == jack_status_t{} ? JackFailure : status);
    }
    writer_ = std::make_unique<PortWriter>(*client_);
    watch_ = std::make_unique<GraphWatch>(
        *client_, mainActor_,
        [this, onChange = std::move(onChange)] {
            followRoute();
            if (onChange) {
                onChange();
            }
        },
        [this] {
            if (const auto onLoss = onLoss_) {
                onLoss();
            }
        });
    if (jack_activate(client_) != 0) {
        disposeClient(clientReference);
        return failure(JackFailure);
    }
    return {.status = 0, .reference = clientReference};
}

MidiCreation MidiSystemAdapter::createOutputPort(MidiObjectRef client, std::string_view name) {
    auto creation = createPort(client, name, PortWriter::Port::output, outputPort_);
    creation.reference = creation.status == 0 ? outputPortReference : 0;
    return creation;
}

MidiCreation MidiSystemAdapter::createSource(MidiObjectRef client, std::string_view name) {
    auto creation = createPort(client, name, PortWriter::Port::source, source_);
    creation.reference = creation.status == 0 ? sourceReference : 0;
    return creation;
}

std::size_t MidiSystemAdapter::numberOfDestinations() {
    destinations_.clear();
    if (isConnected()) {
        const PortNames names(jack_get_ports(client_, nullptr, JACK_DEFAULT_MIDI_TYPE, JackPortIsInput));
        for (const auto* const portName : names) {
            const auto* port = jack_port_by_name(client_, portName);
            if (port != nullptr && jack_port_is_mine(client_, port) == 0) {
                destinations_.push_back(identifiers_.identifierOf(portName));
            }
        }
    }
    return destinations_.size();
}

MidiObjectRef MidiSystemAdapter::destination(std::size_t index) {
    return index < destinations_.size() ? destinations_[index] : 0;
}

std::optional<std::string> MidiSystemAdapter::displayName(MidiObjectRef destination) {
    const auto* portName = identifiers_.portName(destination);
    if (portName == nullptr || !isConnected()) {
        return std::nullopt;
    }
    auto* port = jack_port_by_name(client_, portName->c_str());
    const auto name = port == nullptr ? std::nullopt : prettyName(port);
    // A port gets the number of one that is gone, and with it whatever name that one has left behind: when
    // this program was killed, its own.
    const auto isLeftBehind = name && (*name == outputPort_.name || *name == source_.name);
    return isLeftBehind ? std::nullopt : name;
}

std::optional<std::string> MidiSystemAdapter::name(MidiObjectRef destination) {
    const auto* portName = identifiers_.portName(destination);
    return portName == nullptr ? std::nullopt : std::optional(*portName);
}

void MidiSystemAdapter::prepareRoute(MidiObjectRef outputPort, MidiObjectRef destination) {
    if (outputPort != outputPortReference || destination == route_) {
        return;
    }
    if (isConnected()) {
        // What was sent before still goes where it was sent to, and what has time still goes nowhere else.
        writer_->giveUpScheduled(PortWriter::Port::output);
        writer_->finishSending([this] { return isConnected(); });
    }
    route_ = destination;
    followRoute();
    if (isConnected()) {
        // What is sent next must not come before the connection.
        writer_->awaitConnections([this] { return isConnected(); });
    }
}

void MidiSystemAdapter::send(MidiObjectRef outputPort, MidiObjectRef destination,
                             std::span<const std::uint8_t> message) {
    if (outputPort != outputPortReference || !isConnected()) {
        return;
    }
    prepareRoute(outputPort, destination);
    writer_->send(PortWriter::Port::output, message);
}

void MidiSystemAdapter::received(MidiObjectRef source, std::span<const std::uint8_t> message) {
    if (source == sourceReference && isConnected()) {
        writer_->send(PortWriter::Port::source, message);
    }
}

void MidiSystemAdapter::beginGesture() {
    if (writer_ != nullptr) {
        writer_->beginGesture();
    }
}

void MidiSystemAdapter::endGesture() {
    if (writer_ != nullptr) {
        writer_->endGesture();
    }
}

std::optional<MidiTicket> MidiSystemAdapter::schedule(MidiObjectRef portOrSource, MidiObjectRef destination,
                                                      std::span<const std::uint8_t> message,
                                                      std::chrono::nanoseconds delay) {
    if (!isConnected()) {
        return std::nullopt;
    }
    if (portOrSource == sourceReference) {
        return writer_->schedule(PortWriter::Port::source, message, delay);
    }
    if (portOrSource != outputPortReference) {
        return std::nullopt;
    }
    prepareRoute(portOrSource, destination);
    return writer_->schedule(PortWriter::Port::output, message, delay);
}

bool MidiSystemAdapter::cancel(MidiTicket ticket) {
    return writer_ != nullptr && writer_->cancel(ticket);
}

void MidiSystemAdapter::settle(MidiTicket ticket) {
    if (writer_ != nullptr) {
        writer_->settle(ticket);
    }
}

void MidiSystemAdapter::setLossHandler(std::function<void()> onLoss) {
    onLoss_ = std::move(onLoss);
}

std::optional<std::size_t> MidiSystemAdapter::listeners(MidiObjectRef source) {
    if (source != sourceReference || source_.port == nullptr || !isConnected()) {
        return std::nullopt;
    }
    const auto connections = jack_port_connected(source_.port);
    return connections < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(connections));
}

std::vector<std::string> MidiSystemAdapter::receivers(MidiObjectRef source, MidiObjectRef destination) {
    std::vector<std::string> found;
    if (!isConnected()) {
        return found;
    }
    auto add = [&found](const std::string& portName) {
        if (auto words = "jack " + portName; std::ranges::find(found, words) == found.end()) {
            found.push_back(std::move(words));
        }
    };
    if (source == sourceReference && source_.port != nullptr) {
        const PortNames connections(jack_port_get_all_connections(client_, source_.port));
        for (const auto* const portName : connections) {
            add(portName);
        }
    }
    if (const auto* portName = identifiers_.portName(destination); portName != nullptr) {
        add(*portName);
    }
    return found;
}

void MidiSystemAdapter::disposePort(MidiObjectRef outputPort) {
    if (outputPort == outputPortReference) {
        disposePort(PortWriter::Port::output, outputPort_);
    }
}

void MidiSystemAdapter::disposeEndpoint(MidiObjectRef source) {
    if (source == sourceReference) {
        disposePort(PortWriter::Port::source, source_);
    }
}

void MidiSystemAdapter::disposeClient(MidiObjectRef client) {
    if (client != clientReference || client_ == nullptr) {
        return;
    }
    // Closing ends the server's calls, so that what they work on can go after it, and not before.
    jack_client_close(client_);
    client_ = nullptr;
    outputPort_ = {};
    source_ = {};
    watch_.reset();
    droppedBefore_ += writer_->droppedMessages();
    writer_.reset();
    destinations_.clear();
    route_ = 0;
}

std::uint64_t MidiSystemAdapter::droppedMessages() const {
    return droppedBefore_ + (writer_ == nullptr ? 0 : writer_->droppedMessages());
}

bool MidiSystemAdapter::isConnected() const {
    return client_ != nullptr && watch_->isServerThere();
}

MidiCreation MidiSystemAdapter::createPort(MidiObjectRef client, std::string_view name, PortWriter::Port kind,
                                           OwnPort& port) {
    if (client != clientReference || !isConnected() || port.port != nullptr) {
        return failure(JackFailure);
    }
    const std::string portName(name);
    auto* const made =
        jack_port_register(client_, portName.c_str(), JACK_DEFAULT_MIDI_TYPE, JackPortIsOutput, 0);
    if (made == nullptr) {
        return failure(JackFailure);
    }
    port = {.port = made, .uuid = jack_port_uuid(made), .name = portName};
    // Only for the eyes: a server without metadata shows the plain name.
    jack_set_property(client_, port.uuid, JACK_METADATA_PRETTY_NAME, portName.c_str(), "text/plain");
    writer_->attach(kind, *made);
    return {};
}

void MidiSystemAdapter::disposePort(PortWriter::Port kind, OwnPort& port) {
    if (port.port == nullptr) {
        return;
    }
    writer_->detach(kind, [this] { return isConnected(); });
    // The names outlive the server, and its successor gives the port's number to another port.
    jack_remove_property(client_, port.uuid, JACK_METADATA_PRETTY_NAME);
    if (isConnected()) {
        jack_port_unregister(client_, port.port);
    }
    port = {};
}

void MidiSystemAdapter::followRoute() {
    if (outputPort_.port == nullptr || !isConnected()) {
        return;
    }
    const auto* wanted = identifiers_.portName(route_);
    auto isThere = false;
    const PortNames connections(jack_port_get_all_connections(client_, outputPort_.port));
    for (const auto* const portName : connections) {
        if (wanted != nullptr && portName == *wanted) {
            isThere = true;
        } else {
            jack_disconnect(client_, jack_port_name(outputPort_.port), portName);
        }
    }
    if (wanted != nullptr && !isThere && jack_port_by_name(client_, wanted->c_str()) != nullptr) {
        jack_connect(client_, jack_port_name(outputPort_.port), wanted->c_str());
    }
}

} // namespace tavro::jack
