#include "Platform/Linux/Jack/MidiSystemAdapter.h"

#include "Platform/Linux/Jack/PortNames.h"

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

/// A server that has just let a client in answers this too, on a busy machine after a while.
constexpr std::chrono::milliseconds patienceForAPort{1000};

} // namespace

MidiSystemAdapter::MidiSystemAdapter(MainActor& mainActor, const MidiSystemOptions& options)
    : mainActor_(mainActor), options_(options), calls_([this, life = std::weak_ptr(life_)] {
          mainActor_.post([this, life] {
              if (!life.expired()) {
                  followChange();
              }
          });
      }) {}

MidiSystemAdapter::~MidiSystemAdapter() {
    disposePort(outputPortReference);
    disposeEndpoint(sourceReference);
    disposeClient(clientReference);
}

MidiCreation MidiSystemAdapter::createClient(std::string_view name, std::function<void()> onChange) {
    if (client_ != nullptr) {
        return failure(JackFailure);
    }
    onChange_ = std::move(onChange);
    if (opening_ == nullptr) {
        opening_ = std::make_unique<ClientOpening>(
            calls_, std::string(name), options_, mainActor_, [this] { followChange(); },
            [this] {
                if (const auto onLoss = onLoss_) {
                    onLoss();
                }
            });
    }
    if (!opening_->isAnswered()) {
        return failure(static_cast<jack_status_t>(JackFailure | JackServerError));
    }
    auto answer = std::exchange(opening_, nullptr)->take();
    if (answer.client == nullptr) {
        return failure(answer.status);
    }
    hasLeftUnsent_ = false;
    client_ = std::move(answer.client);
    notices_ = std::move(answer.notices);
    if (!client_->isServerThere()) {
        disposeClient(clientReference);
        return failure(JackServerError);
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
    // The last of the ports.
    if (isConnected() && !activate()) {
        return failure(JackFailure);
    }
    return creation;
}

std::size_t MidiSystemAdapter::numberOfDestinations() {
    if (!isConnected()) {
        destinations_.clear();
        return 0;
    }
    const auto found = std::make_shared<std::vector<Client::InputPort>>();
    // What has no answer yet is followed by a notice, and the list by another question.
    if (calls_.isUnanswered() ||
        !calls_.make([found, client = client_] { *found = client->inputPortsOfOthers(); },
                     client_->patience())) {
        return destinations_.size();
    }
    destinations_.clear();
    for (auto& port : *found) {
        // A port gets the number of one that is gone, and with it whatever name that one has left behind:
        // when this program was killed, its own.
        if (port.prettyName == outputPort_.name || port.prettyName == source_.name) {
            port.prettyName.reset();
        }
        destinations_.push_back(
            {.identifier = identifiers_.identifierOf(port.name), .displayName = std::move(port.prettyName)});
    }
    return destinations_.size();
}

MidiObjectRef MidiSystemAdapter::destination(std::size_t index) {
    return index < destinations_.size() ? destinations_[index].identifier : 0;
}

std::optional<std::string> MidiSystemAdapter::displayName(MidiObjectRef destination) {
    const auto found = std::ranges::find(destinations_, destination, &Destination::identifier);
    return found == destinations_.end() ? std::nullopt : found->displayName;
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
        client_->writer().giveUpScheduled(PortWriter::Port::output);
        client_->writer().finishSending([this] { return isConnected(); });
    }
    route_ = destination;
    const auto* const wanted = identifiers_.portName(destination);
    connection_.leadTo(wanted == nullptr ? std::string() : *wanted);
}

void MidiSystemAdapter::send(MidiObjectRef outputPort, MidiObjectRef destination,
                             std::span<const std::uint8_t> message) {
    if (outputPort == outputPortReference && isConnected()) {
        prepareRoute(outputPort, destination);
        connection_.send(message);
    }
}

void MidiSystemAdapter::received(MidiObjectRef source, std::span<const std::uint8_t> message) {
    if (source == sourceReference && isConnected()) {
        client_->writer().send(PortWriter::Port::source, message);
    }
}

void MidiSystemAdapter::beginGesture() {
    if (client_ != nullptr) {
        client_->writer().beginGesture();
    }
}

void MidiSystemAdapter::endGesture() {
    if (client_ != nullptr) {
        client_->writer().endGesture();
    }
}

std::optional<MidiTicket> MidiSystemAdapter::schedule(MidiObjectRef portOrSource, MidiObjectRef destination,
                                                      std::span<const std::uint8_t> message,
                                                      std::chrono::nanoseconds delay) {
    if (!isConnected()) {
        return std::nullopt;
    }
    if (portOrSource == sourceReference) {
        return client_->writer().schedule(PortWriter::Port::source, message, delay);
    }
    if (portOrSource != outputPortReference) {
        return std::nullopt;
    }
    prepareRoute(portOrSource, destination);
    if (connection_.isAwaited()) {
        return std::nullopt;
    }
    return client_->writer().schedule(PortWriter::Port::output, message, delay);
}

bool MidiSystemAdapter::cancel(MidiTicket ticket) {
    return client_ != nullptr && client_->writer().cancel(ticket);
}

void MidiSystemAdapter::settle(MidiTicket ticket) {
    if (client_ != nullptr) {
        client_->writer().settle(ticket);
    }
}

void MidiSystemAdapter::setLossHandler(std::function<void()> onLoss) {
    onLoss_ = std::move(onLoss);
}

std::optional<std::size_t> MidiSystemAdapter::listeners(MidiObjectRef source) {
    if (source != sourceReference || source_.port.handle == nullptr || !isConnected()) {
        return std::nullopt;
    }
    const auto connections = jack_port_connected(source_.port.handle);
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
    if (source == sourceReference && source_.port.handle != nullptr) {
        const PortNames connections(jack_port_get_all_connections(&client_->handle(), source_.port.handle));
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
        connection_.close();
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
    connection_.close();
    // Notes on their way when the server goes are everybody's loss.
    hasLeftUnsent_ = isConnected() && client_->writer().hasLeftUnsent();
    droppedBefore_ += client_->writer().droppedMessages();
    const auto time = client_->patience();
    notices_.reset();
    outputPort_ = {};
    source_ = {};
    destinations_.clear();
    route_ = 0;
    // The last to hold it closes it, which is to be the calls' thread.
    calls_.makeSometime([last = std::exchange(client_, nullptr)]() mutable { last.reset(); }, time);
}

std::optional<MidiPeriod> MidiSystemAdapter::period() const {
    if (!isConnected()) {
        return std::nullopt;
    }
    return MidiPeriod{.frames = jack_get_buffer_size(&client_->handle()),
                      .rate = jack_get_sample_rate(&client_->handle())};
}

std::uint64_t MidiSystemAdapter::droppedMessages() const {
    return droppedBefore_ + connection_.droppedMessages() +
           (client_ == nullptr ? 0 : client_->writer().droppedMessages());
}

bool MidiSystemAdapter::isConnected() const {
    return client_ != nullptr && client_->isServerThere();
}

bool MidiSystemAdapter::activate() {
    const auto isActive = std::make_shared<bool>(false);
    const auto isAnswered =
        calls_.make([isActive, held = client_] { *isActive = held->activate(); }, patienceForAPort);
    if (!isAnswered) {
        notices_->line()->announceLoss();
    }
    return isAnswered && *isActive;
}

void MidiSystemAdapter::followChange() {
    connection_.follow();
    if (const auto notify = onChange_) {
        notify();
    }
}

MidiCreation MidiSystemAdapter::createPort(MidiObjectRef client, std::string_view name, PortWriter::Port kind,
                                           OwnPort& own) {
    if (client != clientReference || !isConnected() || own.port.handle != nullptr) {
        return failure(JackFailure);
    }
    const auto made = std::make_shared<Client::Port>();
    const auto isAnswered = calls_.make(
        [made, held = client_, portName = std::string(name)] { *made = held->registerPort(portName); },
        patienceForAPort);
    if (!isAnswered) {
        // As if it had gone: what it may answer later is not waited for.
        notices_->line()->announceLoss();
        return failure(static_cast<jack_status_t>(JackFailure | JackServerError));
    }
    if (made->handle == nullptr) {
        return failure(JackFailure);
    }
    own = {.port = *made, .name = std::string(name)};
    client_->writer().attach(kind, *made->handle);
    if (kind == PortWriter::Port::output) {
        connection_.open(client_, *made->handle);
    }
    return {};
}

void MidiSystemAdapter::disposePort(PortWriter::Port kind, OwnPort& own) {
    if (own.port.handle == nullptr) {
        return;
    }
    client_->writer().detach(kind, [this] { return isConnected(); });
    calls_.makeSometime([held = client_, port = own.port] { held->forgetPort(port); }, client_->patience());
    own = {};
}

} // namespace tavro::jack
