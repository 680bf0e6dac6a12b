#include "Performance/OrderlyStop.h"

#include <chrono>
#include <utility>

namespace tavro {

namespace {

/// The tap's thread lets go and the notes leave meanwhile, which may take two periods of a slow MIDI server.
constexpr std::chrono::milliseconds timeToSettle{400};

} // namespace

OrderlyStop::OrderlyStop(GlobalKeyboardController& keyboard, PerformanceController& performance,
                         GuardLink& guardLink, MainActor& mainActor, Actions actions)
    : keyboard_(keyboard), performance_(performance), guardLink_(guardLink), mainActor_(mainActor),
      actions_(std::move(actions)) {}

void OrderlyStop::begin() {
    keyboard_.pause(GlobalKeyboardController::Pause::processStop);
    performance_.stopAllNotes();
    stopping_ = mainActor_.after(timeToSettle, [this] { stop(); });
}

void OrderlyStop::stop() {
    // Nobody need wait for a stopped program.
    guardLink_.setBusy(false);
    actions_.stopNow();
    actions_.tellGuard();
    keyboard_.resume(GlobalKeyboardController::Pause::processStop);
}

} // namespace tavro
