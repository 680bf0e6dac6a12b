#include "Platform/Qt/TerminationSignals.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace tavro::posix {

namespace {

constexpr std::array terminatingSignals{SIGTERM, SIGINT, SIGHUP};

/// A signal handler may do little more than write to a pipe, and can find it in no other way.
std::array<int, 2> pipeEnds{-1, -1};
volatile std::sig_atomic_t hasComeIn = 0;

void writeToPipe(int /*signal*/) {
    hasComeIn = 1;
    const auto interruptedError = errno;
    const char wake = 1;
    // A full pipe has been written to already: the call is on its way.
    [[maybe_unused]] const auto written = write(pipeEnds[1], &wake, 1);
    errno = interruptedError;
}

void setHandlers(void (*handler)(int)) {
    struct sigaction action{};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const auto signal : terminatingSignals) {
        sigaction(signal, &action, nullptr);
    }
}

} // namespace

TerminationSignals::TerminationSignals(std::function<void()> onTermination) {
    if (pipe(pipeEnds.data()) != 0) {
        return;
    }
    for (const auto end : pipeEnds) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    notifier_ = std::make_unique<QSocketNotifier>(pipeEnds[0], QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [notifier = notifier_.get(), action = std::move(onTermination)] {
                         notifier->setEnabled(false);
                         action();
                     });
    hasComeIn = 0;
    setHandlers(&writeToPipe);
}

TerminationSignals::~TerminationSignals() {
    if (notifier_) {
        // What is still to be done at the end, as closing the MIDI port in order, is not cut off by the
        // second of two signals.
        setHandlers(hasComeIn != 0 ? SIG_IGN : SIG_DFL);
        notifier_.reset();
        close(pipeEnds[0]);
        close(pipeEnds[1]);
    }
}

} // namespace tavro::posix
