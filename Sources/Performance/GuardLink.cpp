#include "Performance/GuardLink.h"

#include <utility>

namespace tavro {

GuardLink::GuardLink(Guard& guard, MainActor& mainActor, const MidiOutputManager& midi)
    : guard_(guard), mainActor_(mainActor), midi_(midi) {
    auto tellReceivers = [this] { guard_.entrustReceivers(midi_.receivers()); };
    receivers_ = QObject::connect(&midi_, &MidiOutputManager::receiversMayHaveChanged, &midi_, tellReceivers);
    tellReceivers();
    // The output may be closed when this has gone.
    QObject::connect(&midi_, &MidiOutputManager::leftUnsent, [&guard] { guard.withholdFarewell(); });
}

GuardLink::~GuardLink() {
    QObject::disconnect(receivers_);
    guard_.expectBeats(false);
}

void GuardLink::setBusy(bool isBusy) {
    if (std::exchange(isBusy_, isBusy) == isBusy) {
        return;
    }
    guard_.expectBeats(isBusy);
    if (isBusy) {
        beat();
    } else {
        nextBeat_.cancel();
    }
}

void GuardLink::showLife() {
    if (isBusy_ && mainActor_.now() - lastBeat_ >= Guard::beatInterval) {
        beat();
    }
}

void GuardLink::beat() {
    lastBeat_ = mainActor_.now();
    nextBeat_ = mainActor_.after(Guard::beatInterval, [this] { beat(); });
    if (const auto deeds = guard_.beat(); deeds != Guard::Deeds() && onDeeds) {
        onDeeds(deeds);
    }
}

} // namespace tavro
