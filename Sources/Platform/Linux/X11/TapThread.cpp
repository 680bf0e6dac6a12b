#include "Platform/Linux/X11/TapThread.h"

#include <array>
#include <csignal>
#include <utility>

#include <poll.h>
#include <pthread.h>
#include <sched.h>

namespace tavro::x11 {

namespace {

/// Asks for precedence over ordinary threads, below those of sound servers. Without the right to it, the tap
/// works just as well while the machine has time.
void preferThisThread() {
    sched_param parameter{};
    parameter.sched_priority = sched_get_priority_min(SCHED_FIFO);
    // Not for a guard that is started here.
    sched_setscheduler(0, SCHED_FIFO | SCHED_RESET_ON_FORK, &parameter);
}

} // namespace

std::unique_ptr<TapThread> TapThread::start(KeyboardTap::Client& client, guard::GuardProcess& guard,
                                            const std::string& display) {
    auto connection = Connection::open(display);
    if (!connection) {
        return nullptr;
    }
    std::unique_ptr<TapThread> made(new TapThread(std::move(connection), client, guard));
    if (!made->wakeUp_.isThere() || !made->session_.begin()) {
        return nullptr;
    }
    // The program's signals are for the threads that expect them; a new thread takes over what is blocked.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    made->thread_ = std::thread([tap = made.get()] { tap->run(); });
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return made;
}

TapThread::TapThread(std::unique_ptr<Connection> connection, KeyboardTap::Client& client,
                     guard::GuardProcess& guard)
    : connection_(std::move(connection)), client_(client), session_(*connection_, client, guard) {}

TapThread::~TapThread() {
    isEnding_ = true;
    wakeUp_.signal();
    if (thread_.joinable()) {
        thread_.join();
    }
}

void TapThread::setOn(bool isOn) {
    isOn_ = isOn;
    wakeUp_.signal();
}

void TapThread::refresh() {
    isStale_ = true;
    wakeUp_.signal();
}

void TapThread::run() {
    pthread_setname_np(pthread_self(), "tavro-tap");
    preferThisThread();
    while (!obey()) {
        if (const auto end = session_.takeEvents()) {
            client_.tapEnded(*end);
            return;
        }
        waitForWork();
    }
    session_.setOn(false);
}

bool TapThread::obey() {
    // Before the flags are read: what is asked for after this wakes the thread again.
    wakeUp_.clear();
    if (isEnding_) {
        return true;
    }
    session_.setOn(isOn_);
    session_.showThatItLives();
    if (isStale_.exchange(false)) {
        session_.refreshAndCompare();
    }
    return false;
}

void TapThread::waitForWork() const {
    xcb_flush(connection_->get());
    std::array<pollfd, 2> sources{pollfd{xcb_get_file_descriptor(connection_->get()), POLLIN, 0},
                                  pollfd{wakeUp_.descriptor(), POLLIN, 0}};
    poll(sources.data(), sources.size(), isOn_ ? static_cast<int>(Guard::beatInterval.count()) : -1);
}

} // namespace tavro::x11
