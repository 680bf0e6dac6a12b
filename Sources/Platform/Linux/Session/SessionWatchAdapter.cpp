#include "Platform/Linux/Session/SessionWatchAdapter.h"

#include <utility>

namespace tavro::linuxos {

SessionWatchAdapter::SessionWatchAdapter()
    : logind_([this] { tell(); }), screenSaver_([this] { tell(); }), terminal_([this] { tell(); }) {}

void SessionWatchAdapter::start(Handler handler) {
    handler_ = std::move(handler);
    tell();
    logind_.open();
    screenSaver_.open();
}

void SessionWatchAdapter::tell() {
    const bool isInFront = isActive() && !logind_.isLocked() && !screenSaver_.isActive();
    if (handler_ && std::exchange(isInFront_, isInFront) != isInFront) {
        handler_(isInFront);
    }
}

bool SessionWatchAdapter::isActive() const {
    // A logind that restarts leaves its last word, so that nothing is taken in between.
    return logind_.isThere() ? logind_.isActive() : terminal_.isOwn().value_or(logind_.isActive());
}

} // namespace tavro::linuxos
