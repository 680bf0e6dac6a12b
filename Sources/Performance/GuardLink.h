#pragma once

#include "Concurrency/MainActor.h"
#include "MidiOutput/MidiOutputManager.h"
#include "PlatformInterfaces/Guard.h"

#include <chrono>
#include <functional>

namespace tavro {

/// Keeps the guard informed: whom it would have to silence, and that the main thread lives, as long as that
/// matters. Main thread only.
class GuardLink {
public:
    /// All of them must outlive this, and the guard the output.
    GuardLink(Guard& guard, MainActor& mainActor, const MidiOutputManager& midi);
    ~GuardLink();
    GuardLink(const GuardLink&) = delete;
    GuardLink& operator=(const GuardLink&) = delete;

    /// Called when the guard has acted although the program lives: it was stopped, or busy for too long.
    std::function<void(const Guard::Deeds&)> onDeeds;

    /// Whether something sounds, or other programs' keys are taken. At rest nothing wakes the program.
    void setBusy(bool isBusy);

    /// To be called at each turn of the event loop. A timer has its turn when nothing else waits, and a
    /// stream of events would look like a hang.
    void showLife();

private:
    void beat();

    Guard& guard_;
    MainActor& mainActor_;
    const MidiOutputManager& midi_;
    bool isBusy_ = false;
    ScheduledTask nextBeat_;
    std::chrono::nanoseconds lastBeat_{0};
    QMetaObject::Connection receivers_;
};

} // namespace tavro
