#include "StrumError/BareStrum.h"

#include <jack/midiport.h>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace tavro::bench {

BareStrum::BareStrum(const std::string& name)
    : client_(jack_client_open(name.c_str(), JackNoStartServer, nullptr)) {
    if (client_ == nullptr) {
        throw std::runtime_error("no JACK server");
    }
    port_ = jack_port_register(client_, "out", JACK_DEFAULT_MIDI_TYPE, JackPortIsOutput, 0);
    jack_set_process_callback(
        client_,
        [](jack_nframes_t frames, void* self) { return static_cast<BareStrum*>(self)->process(frames); },
        this);
    if (port_ == nullptr || jack_activate(client_) != 0) {
        jack_client_close(client_);
        throw std::runtime_error("the JACK client cannot be activated");
    }
}

BareStrum::~BareStrum() {
    jack_client_close(client_);
}

void BareStrum::play(std::uint32_t notes, jack_nframes_t step) {
    request_.store(std::uint64_t{notes} << 32U | step);
}

int BareStrum::process(jack_nframes_t frames) {
    auto* const buffer = jack_port_get_buffer(port_, frames);
    jack_midi_clear_buffer(buffer);
    const auto start = jack_last_frame_time(client_);
    if (const auto request = request_.exchange(0); request != 0) {
        left_ = static_cast<std::uint32_t>(request >> 32U);
        step_ = static_cast<jack_nframes_t>(request);
        next_ = start;
    }
    for (; left_ > 0; --left_, next_ += step_) {
        const auto offset = static_cast<std::int32_t>(next_ - start);
        if (offset >= static_cast<std::int32_t>(frames)) {
            break;
        }
        const std::array<jack_midi_data_t, 3> message{0x90, 60, 100};
        jack_midi_event_write(buffer, static_cast<jack_nframes_t>(std::max(offset, 0)), message.data(),
                              message.size());
    }
    return 0;
}

} // namespace tavro::bench
