#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>

#include <alsa/asoundlib.h>

namespace tavro::alsa {

/// Turns the bytes of MIDI messages into sequencer events.
class MessageEncoder {
public:
    MessageEncoder();

    /// Calls `deliver` with the event that the message makes, or with several for a system exclusive message
    /// of more than `longestPiece` bytes; the event is valid only inside the call. False when bytes were left
    /// that make no whole message. Each call begins anew: there is no running status.
    bool encode(std::span<const std::uint8_t> message, const std::function<void(snd_seq_event_t&)>& deliver);

    static constexpr std::size_t longestPiece = 256;

private:
    struct Free {
        void operator()(snd_midi_event_t* encoder) const { snd_midi_event_free(encoder); }
    };

    std::unique_ptr<snd_midi_event_t, Free> encoder_;
};

} // namespace tavro::alsa
