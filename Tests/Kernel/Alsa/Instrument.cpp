#include "Instrument.h"

#include <algorithm>
#include <stdexcept>

#include <alsa/asoundlib.h>

namespace tavro::proof {

alsa::PortAddress Instrument::source() {
    // Asked of the sequencer by name, as another program finds it.
    snd_seq_t* sequencer = nullptr;
    if (snd_seq_open(&sequencer, "default", SND_SEQ_OPEN_OUTPUT, 0) < 0) {
        throw std::runtime_error("there is no sequencer");
    }
    std::optional<alsa::PortAddress> found;
    snd_seq_client_info_t* client = nullptr;
    snd_seq_client_info_alloca(&client);
    snd_seq_port_info_t* port = nullptr;
    snd_seq_port_info_alloca(&port);
    snd_seq_client_info_set_client(client, -1);
    while (!found && snd_seq_query_next_client(sequencer, client) >= 0) {
        if (std::string(snd_seq_client_info_get_name(client)) != "TAVRO") {
            continue;
        }
        snd_seq_port_info_set_client(port, snd_seq_client_info_get_client(client));
        snd_seq_port_info_set_port(port, -1);
        while (!found && snd_seq_query_next_port(sequencer, port) >= 0) {
            if (std::string(snd_seq_port_info_get_name(port)) == "TAVRO Out") {
                const auto* address = snd_seq_port_info_get_addr(port);
                found = alsa::PortAddress{address->client, address->port};
            }
        }
    }
    snd_seq_close(sequencer);
    if (!found) {
        throw std::runtime_error("no client TAVRO with a port TAVRO Out");
    }
    return *found;
}

const MidiDestination* Instrument::listed(MidiObjectRef number) const {
    const auto& all = manager_.destinations();
    const auto found = std::ranges::find(all, number, &MidiDestination::id);
    return found == all.end() ? nullptr : &*found;
}

MidiObjectRef Instrument::numberOf(const std::string& name) const {
    const auto& all = manager_.destinations();
    const auto found = std::ranges::find(all, name, &MidiDestination::name);
    return found == all.end() ? 0 : found->id;
}

void Instrument::noteOn(int note) {
    manager_.send({NoteEvent::EventType::noteOn, note, 100, 1, U'a'});
}

void Instrument::noteOff(int note) {
    manager_.send({NoteEvent::EventType::noteOff, note, 0, 1, U'a'});
}

} // namespace tavro::proof
