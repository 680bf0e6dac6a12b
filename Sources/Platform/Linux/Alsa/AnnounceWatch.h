#pragma once

#include "Concurrency/MainActor.h"
#include "Platform/Linux/Alsa/DestinationIdentifiers.h"
#include "Platform/Linux/Alsa/ScheduledEvents.h"
#include "Platform/Linux/Alsa/SequencerQueue.h"

#include <cstdint>
#include <functional>
#include <memory>

#include <alsa/asoundlib.h>

class QSocketNotifier;

namespace tavro::alsa {

/// Listens to the port at which the sequencer tells about clients, ports and connections that come, go and
/// change, and takes the marks of the queue on the way. Needs Qt's event loop. Main thread only.
class AnnounceWatch {
public:
    /// Who is told, at the moment at which a notice is taken, and must outlive this.
    struct Followers {
        DestinationIdentifiers& identifiers;
        const SequencerQueue& queue;
        ScheduledEvents& scheduled;
    };

    /// The handle is open for input, does not block, and is read by nobody else. `onChange` is called later,
    /// once for notices that come in a row, and never after this was destroyed.
    AnnounceWatch(snd_seq_t& sequencer, MainActor& mainActor, Followers followers,
                  std::function<void()> onChange);
    ~AnnounceWatch();

    AnnounceWatch(const AnnounceWatch&) = delete;
    AnnounceWatch& operator=(const AnnounceWatch&) = delete;

    /// Makes the port that listens. Its number, or the negative error number of the sequencer.
    [[nodiscard]] std::int32_t start();

    /// Takes what has come so far. True when there were notices.
    bool takeNotices();

private:
    void note(const snd_seq_event_t& event);
    void announce();

    snd_seq_t& sequencer_;
    MainActor& mainActor_;
    Followers tell_;
    std::function<void()> onChange_;
    std::unique_ptr<QSocketNotifier> notifier_;
    bool isAnnounced_ = false;
    /// What waits on the main actor cannot be cancelled; it looks here whether this still exists.
    std::shared_ptr<const bool> life_ = std::make_shared<const bool>(true);
};

} // namespace tavro::alsa
