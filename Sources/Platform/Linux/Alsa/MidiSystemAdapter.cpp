#include "Platform/Linux/Alsa/MidiSystemAdapter.h"

#include "Platform/Linux/Alsa/PortDirectory.h"

#include <algorithm>
#include <cerrno>
#include <string>
#include <utility>

namespace tavro::alsa {

namespace {

MidiCreation failure(int status) {
    return {.status = status, .reference = 0};
}

/// From the port to the destination, or to all who listen to the port.
void address(snd_seq_event_t& event, int port, std::optional<PortAddress> destination) {
    snd_seq_ev_set_source(&event, static_cast<unsigned char>(port));
    if (destination) {
        snd_seq_ev_set_dest(&event, destination->client, destination->port);
    } else {
        snd_seq_ev_set_subs(&event);
    }
}

void keepSilent(const char* /*file*/, int /*line*/, const char* /*function*/, int /*error*/,
                const char* /*format*/, ...) {}

} // namespace

MidiSystemAdapter::MidiSystemAdapter(MainActor& mainActor) : mainActor_(mainActor) {}

MidiSystemAdapter::~MidiSystemAdapter() = default;

MidiCreation MidiSystemAdapter::createClient(std::string_view name, std::function<void()> onChange) {
    if (sequencer_ != nullptr) {
        return failure(-EBUSY);
    }
    // A missing sequencer is told by the status; the library's own lines about it would only alarm.
    snd_lib_error_set_handler(keepSilent);

    snd_seq_t* opened = nullptr;
    auto status = snd_seq_open(&opened, "default", SND_SEQ_OPEN_DUPLEX, SND_SEQ_NONBLOCK);
    if (status < 0) {
        return failure(status);
    }
    sequencer_.reset(opened);
    queue_ = std::make_unique<SequencerQueue>(*opened, [this] { watch_->takeNotices(); });
    scheduled_ = std::make_unique<ScheduledEvents>(*queue_);
    watch_ = std::make_unique<AnnounceWatch>(
        *opened, mainActor_,
        AnnounceWatch::Followers{.identifiers = identifiers_, .queue = *queue_, .scheduled = *scheduled_},
        [this, onChange = std::move(onChange)] {
            refresh();
            followRoute();
            if (onChange) {
                onChange();
            }
        });
    status = snd_seq_set_client_name(opened, std::string(name).c_str());
    if (status >= 0) {
        status = watch_->start();
    }
    if (status < 0) {
        close();
        return failure(status);
    }
    queue_->open(status);
    identifiers_.allMayHaveGone();
    return {.status = 0, .reference = static_cast<MidiObjectRef>(snd_seq_client_id(opened))};
}

MidiCreation MidiSystemAdapter::createOutputPort(MidiObjectRef client, std::string_view name) {
    return createPort(client, name, SND_SEQ_PORT_CAP_NO_EXPORT, outputPort_);
}

MidiCreation MidiSystemAdapter::createSource(MidiObjectRef client, std::string_view name) {
    if (!source_) {
        listeners_ = 0;
    }
    return createPort(client, name, SND_SEQ_PORT_CAP_READ | SND_SEQ_PORT_CAP_SUBS_READ, source_);
}

std::size_t MidiSystemAdapter::numberOfDestinations() {
    refresh();
    return destinations_.size();
}

MidiObjectRef MidiSystemAdapter::destination(std::size_t index) {
    return index < destinations_.size() ? destinations_[index] : 0;
}

std::optional<std::string> MidiSystemAdapter::displayName(MidiObjectRef destination) {
    const auto* port = identifiers_.port(destination);
    return port == nullptr ? std::nullopt : std::optional(port->displayName());
}

std::optional<std::string> MidiSystemAdapter::name(MidiObjectRef destination) {
    const auto* port = identifiers_.port(destination);
    return port == nullptr ? std::nullopt : std::optional(port->portName);
}

void MidiSystemAdapter::prepareRoute(MidiObjectRef outputPort, MidiObjectRef destination) {
    if (!outputPort_ || numberOf(*outputPort_) != outputPort || destination == route_) {
        return;
    }
    // What has time still goes nowhere else, and what was sent before where it was sent to.
    dropped_ +=
        scheduled_->giveUp([&](const snd_seq_event_t& event) { return event.source.port == *outputPort_; });
    scheduled_->finish();
    if (const auto* const port = identifiers_.port(route_)) {
        snd_seq_disconnect_to(sequencer_.get(), *outputPort_, port->address.client, port->address.port);
    }
    route_ = destination;
    followRoute();
}

void MidiSystemAdapter::send(MidiObjectRef outputPort, MidiObjectRef destination,
                             std::span<const std::uint8_t> message) {
    if (!outputPort_ || numberOf(*outputPort_) != outputPort) {
        return;
    }
    // The address may have gone to another program a moment ago, which must not hear these notes.
    watch_->takeNotices();
    if (identifiers_.isThere(destination)) {
        deliver(*outputPort_, identifiers_.port(destination)->address, message);
    }
}

void MidiSystemAdapter::received(MidiObjectRef source, std::span<const std::uint8_t> message) {
    if (source_ && numberOf(*source_) == source) {
        deliver(*source_, std::nullopt, message);
    }
}

std::optional<MidiTicket> MidiSystemAdapter::schedule(MidiObjectRef portOrSource, MidiObjectRef destination,
                                                      std::span<const std::uint8_t> message,
                                                      std::chrono::nanoseconds delay) {
    std::optional<int> from;
    if (source_ && numberOf(*source_) == portOrSource) {
        from = source_;
    } else if (outputPort_ && numberOf(*outputPort_) == portOrSource) {
        watch_->takeNotices();
        prepareRoute(portOrSource, destination);
        if (followRoute()) {
            from = outputPort_;
        }
    }
    std::vector<snd_seq_event_t> events;
    const auto isWhole =
        encoder_.encode(message, [&](const snd_seq_event_t& event) { events.push_back(event); });
    if (!from || !isWhole || events.size() != 1 || snd_seq_ev_is_variable(&events.front())) {
        return std::nullopt;
    }
    address(events.front(), *from, std::nullopt);
    return scheduled_->schedule(events.front(), delay);
}

bool MidiSystemAdapter::cancel(MidiTicket ticket) {
    return scheduled_ != nullptr && scheduled_->cancel(ticket);
}

void MidiSystemAdapter::settle(MidiTicket ticket) {
    if (scheduled_ != nullptr) {
        scheduled_->settle(ticket);
    }
}

std::optional<std::size_t> MidiSystemAdapter::listeners(MidiObjectRef source) {
    return source_ && numberOf(*source_) == source ? std::optional(listeners_) : std::nullopt;
}

std::vector<std::string> MidiSystemAdapter::receivers(MidiObjectRef source, MidiObjectRef destination) {
    std::vector<PortAddress> found;
    if (source_ && numberOf(*source_) == source) {
        found = listListeners(*sequencer_, *source_);
    }
    if (identifiers_.isThere(destination)) {
        const auto address = identifiers_.port(destination)->address;
        if (std::ranges::find(found, address) == found.end()) {
            found.push_back(address);
        }
    }
    std::vector<std::string> words;
    words.reserve(found.size());
    for (const auto& address : found) {
        words.push_back("alsa " + std::to_string(address.client) + ':' + std::to_string(address.port));
    }
    return words;
}

void MidiSystemAdapter::disposePort(MidiObjectRef outputPort) {
    if (outputPort_ && numberOf(*outputPort_) == outputPort) {
        disposePort(outputPort, outputPort_);
        route_ = 0;
    }
}

void MidiSystemAdapter::disposeEndpoint(MidiObjectRef source) {
    disposePort(source, source_);
}

void MidiSystemAdapter::disposeClient(MidiObjectRef client) {
    if (sequencer_ == nullptr || client != static_cast<MidiObjectRef>(snd_seq_client_id(sequencer_.get()))) {
        return;
    }
    dropped_ += scheduled_->giveUp([](const snd_seq_event_t& /*event*/) { return true; });
    scheduled_->finish();
    dropped_ = droppedMessages();
    close();
    outputPort_.reset();
    source_.reset();
    route_ = 0;
    destinations_.clear();
}

std::uint64_t MidiSystemAdapter::droppedMessages() const {
    return dropped_ + (queue_ == nullptr ? 0 : queue_->lost());
}

MidiObjectRef MidiSystemAdapter::numberOf(int port) const {
    const auto client = snd_seq_client_id(sequencer_.get());
    return PortAddress{static_cast<std::uint8_t>(client), static_cast<std::uint8_t>(port)}.number();
}

bool MidiSystemAdapter::followRoute() {
    if (!outputPort_ || !identifiers_.isThere(route_)) {
        return false;
    }
    const auto to = identifiers_.port(route_)->address;
    return isConnected(*sequencer_, *outputPort_, to) ||
           snd_seq_connect_to(sequencer_.get(), *outputPort_, to.client, to.port) >= 0;
}

MidiCreation MidiSystemAdapter::createPort(MidiObjectRef client, std::string_view name, unsigned capabilities,
                                           std::optional<int>& port) {
    if (sequencer_ == nullptr || client != static_cast<MidiObjectRef>(snd_seq_client_id(sequencer_.get()))) {
        return failure(-EINVAL);
    }
    if (port) {
        return failure(-EBUSY);
    }
    const auto made =
        snd_seq_create_simple_port(sequencer_.get(), std::string(name).c_str(), capabilities,
                                   SND_SEQ_PORT_TYPE_MIDI_GENERIC | SND_SEQ_PORT_TYPE_APPLICATION);
    if (made < 0) {
        return failure(made);
    }
    port = made;
    return {.status = 0, .reference = numberOf(made)};
}

void MidiSystemAdapter::disposePort(MidiObjectRef reference, std::optional<int>& port) {
    if (port && numberOf(*port) == reference) {
        dropped_ +=
            scheduled_->giveUp([&](const snd_seq_event_t& event) { return event.source.port == *port; });
        scheduled_->finish();
        snd_seq_delete_simple_port(sequencer_.get(), *port);
        port.reset();
    }
}

void MidiSystemAdapter::refresh() {
    destinations_.clear();
    if (sequencer_ == nullptr) {
        return;
    }
    auto ports = listDestinations(*sequencer_);
    // A list that notices came after may mix what was before them with what was after.
    while (watch_->takeNotices()) {
        ports = listDestinations(*sequencer_);
    }
    for (const auto& port : ports) {
        destinations_.push_back(identifiers_.identifierOf(port));
    }
    if (source_) {
        listeners_ = countListeners(*sequencer_, *source_);
    }
}

void MidiSystemAdapter::deliver(int port, std::optional<PortAddress> destination,
                                std::span<const std::uint8_t> message) {
    const auto isWhole = encoder_.encode(message, [&](snd_seq_event_t& event) {
        address(event, port, destination);
        if (!goOut(event)) {
            ++dropped_;
        }
    });
    if (!isWhole) {
        ++dropped_;
    }
}

bool MidiSystemAdapter::goOut(snd_seq_event_t& event) {
    if (scheduled_->isHolding()) {
        return scheduled_->addBehind(event);
    }
    snd_seq_ev_set_direct(&event);
    return snd_seq_event_output_direct(sequencer_.get(), &event) >= 0;
}

void MidiSystemAdapter::close() {
    watch_.reset();
    scheduled_.reset();
    queue_.reset();
    sequencer_.reset();
}

} // namespace tavro::alsa
