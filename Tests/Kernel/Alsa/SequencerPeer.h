#pragma once

#include "Platform/Linux/Alsa/PortAddress.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <alsa/asoundlib.h>

namespace tavro::proof {

using Bytes = std::vector<std::uint8_t>;

/// Another program of the sequencer, with a handle of its own. What cannot be done throws.
class SequencerPeer {
public:
    static constexpr unsigned inputPort = SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_SUBS_WRITE;

    /// Comes with one port that takes messages.
    explicit SequencerPeer(const std::string& name, const std::string& port = "in");

    alsa::PortAddress addPort(const std::string& name, unsigned capabilities = inputPort);
    void removePort(alsa::PortAddress port);
    void rename(const std::string& name);

    /// The first port.
    [[nodiscard]] alsa::PortAddress address() const { return first_; }

    /// The first port as a destination of a client that sees it for the first time.
    [[nodiscard]] MidiObjectRef number() const { return first_.number(); }

    void listenTo(alsa::PortAddress source);
    void stopListeningTo(alsa::PortAddress source);

    struct Message {
        alsa::PortAddress from;
        /// Which of its ports got it.
        std::uint8_t port;
        Bytes bytes;
    };

    /// All messages that have arrived since it was asked last, in order; none when there were too many.
    [[nodiscard]] std::vector<Message> takeMessages();

    /// Their bytes alone.
    [[nodiscard]] std::vector<Bytes> take();

    /// What the sequencer tells this program about another's port; throws when there is none.
    struct PortFacts {
        std::string client;
        std::string port;
        unsigned capabilities;
        unsigned type;
    };

    [[nodiscard]] PortFacts factsOf(alsa::PortAddress port) const;
    [[nodiscard]] bool isThere(std::uint8_t client) const;

private:
    struct Close {
        void operator()(snd_seq_t* sequencer) const { snd_seq_close(sequencer); }
    };

    struct Free {
        void operator()(snd_midi_event_t* decoder) const { snd_midi_event_free(decoder); }
    };

    std::unique_ptr<snd_seq_t, Close> sequencer_;
    std::unique_ptr<snd_midi_event_t, Free> decoder_;
    alsa::PortAddress first_;
};

} // namespace tavro::proof
