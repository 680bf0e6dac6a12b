#include "Platform/Linux/Alsa/AnnounceWatch.h"

#include <QSocketNotifier>

#include <cerrno>
#include <utility>

#include <poll.h>

namespace tavro::alsa {

AnnounceWatch::AnnounceWatch(snd_seq_t& sequencer, MainActor& mainActor, Followers followers,
                             std::function<void()> onChange)
    : sequencer_(sequencer), mainActor_(mainActor), tell_(followers), onChange_(std::move(onChange)) {}

AnnounceWatch::~AnnounceWatch() = default;

std::int32_t AnnounceWatch::start() {
    // Writable, or the sequencer could not deliver to it; not for other programs.
    const auto port = snd_seq_create_simple_port(&sequencer_, "TAVRO System",
                                                 SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_NO_EXPORT,
                                                 SND_SEQ_PORT_TYPE_APPLICATION);
    if (port < 0) {
        return port;
    }
    const auto status =
        snd_seq_connect_from(&sequencer_, port, SND_SEQ_CLIENT_SYSTEM, SND_SEQ_PORT_SYSTEM_ANNOUNCE);
    if (status < 0) {
        return status;
    }
    pollfd descriptor{};
    if (snd_seq_poll_descriptors(&sequencer_, &descriptor, 1, POLLIN) != 1) {
        return -EIO;
    }
    notifier_ = std::make_unique<QSocketNotifier>(descriptor.fd, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this] { takeNotices(); });
    return port;
}

bool AnnounceWatch::takeNotices() {
    auto hasCome = false;
    while (true) {
        snd_seq_event_t* event = nullptr;
        const auto status = snd_seq_event_input(&sequencer_, &event);
        if (status >= 0 && event != nullptr) {
            // Any program may write to the ports; only the sequencer's own notices and the own marks count.
            if (const auto mark = tell_.queue.markOf(*event)) {
                tell_.scheduled.markHasCome(*mark);
            } else if (event->source.client == SND_SEQ_CLIENT_SYSTEM) {
                note(*event);
                hasCome = true;
            }
        } else if (status == -ENOSPC) {
            // Notices were lost, and with them who has gone.
            tell_.identifiers.allMayHaveGone();
            tell_.scheduled.marksWereLost();
            hasCome = true;
        } else if (status != -EINTR) {
            if (status != -EAGAIN && notifier_ != nullptr) {
                // It would stay readable and wake the main thread without end.
                notifier_->setEnabled(false);
            }
            break;
        }
    }
    if (hasCome) {
        announce();
    }
    return hasCome;
}

void AnnounceWatch::note(const snd_seq_event_t& event) {
    const auto& address = event.data.addr;
    if (event.type == SND_SEQ_EVENT_CLIENT_EXIT) {
        tell_.identifiers.clientHasGone(address.client);
    } else if (event.type == SND_SEQ_EVENT_PORT_EXIT) {
        tell_.identifiers.portHasGone({address.client, address.port});
    }
}

void AnnounceWatch::announce() {
    if (std::exchange(isAnnounced_, true)) {
        return;
    }
    mainActor_.post([this, life = std::weak_ptr(life_)] {
        if (life.expired()) {
            return;
        }
        // Before the call: a notice that is taken while it runs needs another one.
        isAnnounced_ = false;
        onChange_();
    });
}

} // namespace tavro::alsa
