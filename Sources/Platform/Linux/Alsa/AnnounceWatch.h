#pragma once

#include "Concurrency/MainActor.h"
#include "Platform/Linux/Alsa/DestinationIdentifiers.h"

#include <cstdint>
#include <functional>
#include <memory>

#include <alsa/asoundlib.h>

class QSocketNotifier;

namespace tavro::alsa {

/// Listens to the port at which the sequencer tells about clients, ports and connections that come, go and
/// change. Needs Qt's event loop. Main thread only.
class AnnounceWatch {
public:
    /// The handle is open for input, does not block, and is read by nobody else. `identifiers` is told what
    /// has gone, at the moment at which the notice is taken. `onChange` is called later, once for notices
    /// that come in a row, and never after this was destroyed.
    AnnounceWatch(snd_seq_t& sequencer, MainActor& mainActor, DestinationIdentifiers& identifiers,
                  std::function<void()> onChange);
    ~AnnounceWatch();

    AnnounceWatch(const AnnounceWatch&) = delete;
    AnnounceWatch& operator=(const AnnounceWatch&) = delete;

    /// Makes the port that listens. 0, or the negative error number of the sequencer.
    [[nodiscard]] std::int32_t start();

    /// Takes the notices that have come so far. True when there were any.
    bool takeNotices();

private:
    void note(const snd_seq_event_t& event);
    void announce();

    snd_seq_t& sequencer_;
    MainActor& mainActor_;
    DestinationIdentifiers& identifiers_;
    std::function<void()> onChange_;
    std::unique_ptr<QSocketNotifier> notifier_;
    bool isAnnounced_ = false;
    /// What waits on the main actor cannot be cancelled; it looks here whether this still exists.
    std::shared_ptr<const bool> life_ = std::make_shared<const bool>(true);
};

} // namespace tavro::alsa
