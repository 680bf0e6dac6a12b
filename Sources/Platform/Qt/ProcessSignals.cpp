#include "Platform/Qt/ProcessSignals.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace tavro::posix {

namespace {

constexpr std::array terminatingSignals{SIGTERM, SIGINT, SIGHUP, SIGQUIT};

constexpr char termination = 't';
constexpr char stop = 's';

/// A signal handler may do little more than write to a pipe, and can find it in no other way.
std::array<int, 2> pipeEnds{-1, -1};
volatile std::sig_atomic_t hasToEnd = 0;

void writeToPipe(int signal) {
    const auto interruptedError = errno;
    if (signal != SIGTSTP) {
        hasToEnd = 1;
    }
    const char kind = signal == SIGTSTP ? stop : termination;
    // A full pipe has been written to already: the call is on its way.
    [[maybe_unused]] const auto written = write(pipeEnds[1], &kind, 1);
    errno = interruptedError;
}

/// Only where another action stands already: a program that is to survive its terminal was told so by an
/// ignored signal.
void setHandler(int signal, void (*handler)(int)) {
    struct sigaction action{};
    sigaction(signal, nullptr, &action);
    if (action.sa_handler != SIG_IGN) {
        action.sa_handler = handler;
        action.sa_flags = SA_RESTART;
        sigemptyset(&action.sa_mask);
        sigaction(signal, &action, nullptr);
    }
}

} // namespace

ProcessSignals::ProcessSignals(std::function<void()> onTermination, std::function<void()> onStop)
    : onTermination_(std::move(onTermination)), onStop_(std::move(onStop)) {
    if (pipe(pipeEnds.data()) != 0) {
        return;
    }
    for (const auto end : pipeEnds) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    notifier_ = std::make_unique<QSocketNotifier>(pipeEnds[0], QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] {
        char kind = 0;
        if (read(pipeEnds[0], &kind, 1) == 1) {
            take(kind);
        }
    });
    hasToEnd = 0;
    for (const auto signal : terminatingSignals) {
        setHandler(signal, &writeToPipe);
    }
    if (onStop_) {
        setHandler(SIGTSTP, &writeToPipe);
    }
}

ProcessSignals::~ProcessSignals() {
    if (!notifier_) {
        return;
    }
    // What is still to be done at the end, as closing the MIDI port in order, is not cut off by the second of
    // two signals.
    for (const auto signal : terminatingSignals) {
        setHandler(signal, hasToEnd != 0 ? SIG_IGN : SIG_DFL);
    }
    setHandler(SIGTSTP, SIG_DFL);
    notifier_.reset();
    close(pipeEnds[0]);
    close(pipeEnds[1]);
}

void ProcessSignals::take(char kind) const {
    if (kind == stop) {
        onStop_();
        return;
    }
    notifier_->setEnabled(false);
    onTermination_();
}

void ProcessSignals::stopNow() const {
    setHandler(SIGTSTP, SIG_DFL);
    raise(SIGTSTP);
    setHandler(SIGTSTP, &writeToPipe);
}

} // namespace tavro::posix
