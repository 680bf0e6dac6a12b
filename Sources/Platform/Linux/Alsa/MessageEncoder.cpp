#include "Platform/Linux/Alsa/MessageEncoder.h"

#include <new>

namespace tavro::alsa {

MessageEncoder::MessageEncoder() {
    snd_midi_event_t* encoder = nullptr;
    if (snd_midi_event_new(longestPiece, &encoder) < 0) {
        throw std::bad_alloc();
    }
    encoder_.reset(encoder);
}

bool MessageEncoder::encode(std::span<const std::uint8_t> message,
                            const std::function<void(snd_seq_event_t&)>& deliver) {
    snd_midi_event_reset_encode(encoder_.get());
    auto isWhole = false;
    while (!message.empty()) {
        snd_seq_event_t event;
        snd_seq_ev_clear(&event);
        event.type = SND_SEQ_EVENT_NONE;
        const auto used =
            snd_midi_event_encode(encoder_.get(), message.data(), static_cast<long>(message.size()), &event);
        if (used <= 0) {
            return false;
        }
        message = message.subspan(static_cast<std::size_t>(used));
        isWhole = event.type != SND_SEQ_EVENT_NONE;
        if (isWhole) {
            deliver(event);
        }
    }
    return isWhole;
}

} // namespace tavro::alsa
