#include "Platform/Linux/GuardDeeds/AlsaSilence.h"

#include "PlatformInterfaces/PanicMessages.h"

#include <memory>

#include <alsa/asoundlib.h>

namespace tavro::guard {

namespace {

void sendPanic(snd_seq_t& sequencer, int from, const snd_seq_addr_t& to) {
    // The kernel opens a MIDI device for a connection, and throws away what comes without one.
    snd_seq_connect_to(&sequencer, from, to.client, to.port);
    for (const auto& message : panicMessages()) {
        snd_seq_event_t event{};
        snd_seq_ev_set_source(&event, static_cast<unsigned char>(from));
        snd_seq_ev_set_dest(&event, to.client, to.port);
        snd_seq_ev_set_direct(&event);
        snd_seq_ev_set_controller(&event, message[0] & 0x0FU, message[1], message[2]);
        snd_seq_event_output_direct(&sequencer, &event);
    }
}

} // namespace

void AlsaSilence::send(const std::vector<std::string>& ports) {
    snd_seq_t* opened = nullptr;
    if (ports.empty() || snd_seq_open(&opened, "default", SND_SEQ_OPEN_OUTPUT, 0) != 0) {
        return;
    }
    const std::unique_ptr<snd_seq_t, int (*)(snd_seq_t*)> sequencer(opened, &snd_seq_close);
    snd_seq_set_client_name(opened, "TAVRO Guard");
    const auto from = snd_seq_create_simple_port(
        opened, "Panic", 0, SND_SEQ_PORT_TYPE_MIDI_GENERIC | SND_SEQ_PORT_TYPE_APPLICATION);
    for (const auto& port : ports) {
        snd_seq_addr_t to{};
        if (from >= 0 && snd_seq_parse_address(nullptr, &to, port.c_str()) == 0) {
            sendPanic(*opened, from, to);
        }
    }
}

} // namespace tavro::guard
