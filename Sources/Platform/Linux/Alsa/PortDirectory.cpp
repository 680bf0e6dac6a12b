#include "Platform/Linux/Alsa/PortDirectory.h"

#include <memory>

namespace tavro::alsa {

namespace {

using ClientInfo = std::unique_ptr<snd_seq_client_info_t, decltype(&snd_seq_client_info_free)>;
using PortInfo = std::unique_ptr<snd_seq_port_info_t, decltype(&snd_seq_port_info_free)>;

/// Both hold null when there is no memory.
ClientInfo makeClientInfo() {
    snd_seq_client_info_t* info = nullptr;
    snd_seq_client_info_malloc(&info);
    return {info, snd_seq_client_info_free};
}

PortInfo makePortInfo() {
    snd_seq_port_info_t* info = nullptr;
    snd_seq_port_info_malloc(&info);
    return {info, snd_seq_port_info_free};
}

bool isDestination(const snd_seq_port_info_t& info) {
    constexpr unsigned wanted = SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_SUBS_WRITE;
    // Newer sequencers list the unused ports of a MIDI 2.0 device too, under this mark; older headers have no
    // name for it.
    constexpr unsigned inactive = 1U << 8U;
    constexpr unsigned unwanted = SND_SEQ_PORT_CAP_NO_EXPORT | inactive;
    const auto capabilities = snd_seq_port_info_get_capability(&info);
    return (capabilities & wanted) == wanted && (capabilities & unwanted) == 0;
}

} // namespace

std::vector<SequencerPort> listDestinations(snd_seq_t& sequencer) {
    std::vector<SequencerPort> found;
    const auto client = makeClientInfo();
    const auto port = makePortInfo();
    if (client == nullptr || port == nullptr) {
        return found;
    }
    const auto own = snd_seq_client_id(&sequencer);
    snd_seq_client_info_set_client(client.get(), -1);
    while (snd_seq_query_next_client(&sequencer, client.get()) >= 0) {
        const auto number = snd_seq_client_info_get_client(client.get());
        if (number == own || number == SND_SEQ_CLIENT_SYSTEM) {
            continue;
        }
        snd_seq_port_info_set_client(port.get(), number);
        snd_seq_port_info_set_port(port.get(), -1);
        while (snd_seq_query_next_port(&sequencer, port.get()) >= 0) {
            if (isDestination(*port)) {
                const auto* address = snd_seq_port_info_get_addr(port.get());
                found.push_back({{address->client, address->port},
                                 snd_seq_client_info_get_name(client.get()),
                                 snd_seq_port_info_get_name(port.get())});
            }
        }
    }
    return found;
}

std::size_t countListeners(snd_seq_t& sequencer, int port) {
    const auto info = makePortInfo();
    if (info == nullptr || snd_seq_get_port_info(&sequencer, port, info.get()) < 0) {
        return 0;
    }
    return static_cast<std::size_t>(snd_seq_port_info_get_read_use(info.get()));
}

std::vector<PortAddress> listListeners(snd_seq_t& sequencer, int port) {
    std::vector<PortAddress> found;
    snd_seq_query_subscribe_t* made = nullptr;
    if (snd_seq_query_subscribe_malloc(&made) < 0) {
        return found;
    }
    const std::unique_ptr<snd_seq_query_subscribe_t, void (*)(snd_seq_query_subscribe_t*)> query(
        made, &snd_seq_query_subscribe_free);
    const snd_seq_addr_t own{.client = static_cast<unsigned char>(snd_seq_client_id(&sequencer)),
                             .port = static_cast<unsigned char>(port)};
    snd_seq_query_subscribe_set_root(made, &own);
    snd_seq_query_subscribe_set_type(made, SND_SEQ_QUERY_SUBS_READ);
    for (int index = 0;; ++index) {
        snd_seq_query_subscribe_set_index(made, index);
        if (snd_seq_query_port_subscribers(&sequencer, made) < 0) {
            return found;
        }
        const auto* const address = snd_seq_query_subscribe_get_addr(made);
        found.push_back({address->client, address->port});
    }
}

bool isConnected(snd_seq_t& sequencer, int port, PortAddress destination) {
    const snd_seq_addr_t own{.client = static_cast<unsigned char>(snd_seq_client_id(&sequencer)),
                             .port = static_cast<unsigned char>(port)};
    const snd_seq_addr_t other{.client = destination.client, .port = destination.port};
    snd_seq_port_subscribe_t* connection = nullptr;
    snd_seq_port_subscribe_alloca(&connection);
    snd_seq_port_subscribe_set_sender(connection, &own);
    snd_seq_port_subscribe_set_dest(connection, &other);
    return snd_seq_get_port_subscription(&sequencer, connection) >= 0;
}

} // namespace tavro::alsa
