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
    watch_ = std::make_unique<AnnounceWatch>(*opened, mainActor_, identifiers_,
                                             [this, onChange = std::move(onChange)] {
                                                 refresh();
                                                 if (onChange) {
                                                     onChange();
                                                 }
                                             });
    status = snd_seq_set_client_name(opened, std::string(name).c_str());
    if (status >= 0) {
        status = watch_->start();
    }
    if (status < 0) {
        watch_.reset();
        sequencer_.reset();
        return failure(status);
    }
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

void MidiSystemAdapter::prepareRoute(MidiObjectRef /*outputPort*/, MidiObjectRef /*destination*/) {
    // Every message carries its destination; there is no connection to make.
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
    disposePort(outputPort, outputPort_);
}

void MidiSystemAdapter::disposeEndpoint(MidiObjectRef source) {
    disposePort(source, source_);
}

void MidiSystemAdapter::disposeClient(MidiObjectRef client) {
    if (sequencer_ == nullptr || client != static_cast<MidiObjectRef>(snd_seq_client_id(sequencer_.get()))) {
        return;
    }
    watch_.reset();
    sequencer_.reset();
    outputPort_.reset();
    source_.reset();
    destinations_.clear();
}

MidiObjectRef MidiSystemAdapter::numberOf(int port) const {
    const auto client = snd_seq_client_id(sequencer_.get());
    return PortAddress{static_cast<std::uint8_t>(client), static_cast<std::uint8_t>(port)}.number();
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
        snd_seq_ev_set_source(&event, static_cast<unsigned char>(port));
        if (destination) {
            snd_seq_ev_set_dest(&event, destination->client, destination->port);
        } else {
            snd_seq_ev_set_subs(&event);
        }
        snd_seq_ev_set_direct(&event);
        if (snd_seq_event_output_direct(sequencer_.get(), &event) < 0) {
            ++dropped_;
        }
    });
    if (!isWhole) {
        ++dropped_;
    }
}

} // namespace tavro::alsa
