#include "SequencerPeer.h"

#include <array>
#include <cerrno>
#include <stdexcept>

namespace tavro::proof {

namespace {

int demand(int status, const char* what) {
    if (status < 0) {
        throw std::runtime_error(std::string(what) + " failed: " + snd_strerror(status));
    }
    return status;
}

} // namespace

SequencerPeer::SequencerPeer(const std::string& name, const std::string& port) {
    snd_seq_t* opened = nullptr;
    demand(snd_seq_open(&opened, "default", SND_SEQ_OPEN_DUPLEX, SND_SEQ_NONBLOCK), "opening the sequencer");
    sequencer_.reset(opened);
    snd_midi_event_t* decoder = nullptr;
    demand(snd_midi_event_new(1024, &decoder), "making a decoder");
    decoder_.reset(decoder);
    snd_midi_event_no_status(decoder, 1);
    // Room for all that one check sends.
    demand(snd_seq_set_client_pool_input(opened, 1000), "making room");
    rename(name);
    first_ = addPort(port);
}

alsa::PortAddress SequencerPeer::addPort(const std::string& name, unsigned capabilities) {
    const auto port = demand(snd_seq_create_simple_port(sequencer_.get(), name.c_str(), capabilities,
                                                        SND_SEQ_PORT_TYPE_MIDI_GENERIC),
                             "making a port");
    return {static_cast<std::uint8_t>(snd_seq_client_id(sequencer_.get())), static_cast<std::uint8_t>(port)};
}

void SequencerPeer::removePort(alsa::PortAddress port) {
    demand(snd_seq_delete_simple_port(sequencer_.get(), port.port), "removing a port");
}

void SequencerPeer::rename(const std::string& name) {
    demand(snd_seq_set_client_name(sequencer_.get(), name.c_str()), "naming the client");
}

void SequencerPeer::listenTo(alsa::PortAddress source) {
    demand(snd_seq_connect_from(sequencer_.get(), first_.port, source.client, source.port), "subscribing");
}

void SequencerPeer::stopListeningTo(alsa::PortAddress source) {
    demand(snd_seq_disconnect_from(sequencer_.get(), first_.port, source.client, source.port),
           "unsubscribing");
}

std::vector<SequencerPeer::Message> SequencerPeer::takeMessages() {
    std::vector<Message> messages;
    while (true) {
        snd_seq_event_t* event = nullptr;
        const auto status = snd_seq_event_input(sequencer_.get(), &event);
        if (status == -ENOSPC) {
            // It did not read in time, and what had arrived was thrown away.
            continue;
        }
        if (status < 0) {
            break;
        }
        std::array<std::uint8_t, 1024> bytes{};
        const auto size = snd_midi_event_decode(decoder_.get(), bytes.data(), bytes.size(), event);
        // Notices about subscriptions are no MIDI messages.
        if (size > 0) {
            messages.push_back({{event->source.client, event->source.port},
                                event->dest.port,
                                {bytes.begin(), bytes.begin() + size}});
        }
    }
    return messages;
}

std::vector<Bytes> SequencerPeer::take() {
    std::vector<Bytes> all;
    for (auto& message : takeMessages()) {
        all.push_back(std::move(message.bytes));
    }
    return all;
}

SequencerPeer::PortFacts SequencerPeer::factsOf(alsa::PortAddress port) const {
    snd_seq_client_info_t* clientInfo = nullptr;
    snd_seq_client_info_alloca(&clientInfo);
    demand(snd_seq_get_any_client_info(sequencer_.get(), port.client, clientInfo), "asking about the client");
    snd_seq_port_info_t* portInfo = nullptr;
    snd_seq_port_info_alloca(&portInfo);
    demand(snd_seq_get_any_port_info(sequencer_.get(), port.client, port.port, portInfo),
           "asking about the port");
    return {snd_seq_client_info_get_name(clientInfo), snd_seq_port_info_get_name(portInfo),
            snd_seq_port_info_get_capability(portInfo), snd_seq_port_info_get_type(portInfo)};
}

bool SequencerPeer::isThere(std::uint8_t client) const {
    snd_seq_client_info_t* info = nullptr;
    snd_seq_client_info_alloca(&info);
    return snd_seq_get_any_client_info(sequencer_.get(), client, info) >= 0;
}

} // namespace tavro::proof
