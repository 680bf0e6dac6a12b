// tavro-guard [DISPLAY]: acts for a program that can no longer do it itself. That program, its parent, is at
// the other end of the standard input, and tells there what it has entrusted and that its threads live. When
// they stay away, the keyboard is given back and the notes are silenced; so are the notes when it has ended
// without a farewell.

#include "Platform/Linux/Guard/GuardWatch.h"
#include "Platform/Linux/GuardDeeds/AlsaSilence.h"
#include "Platform/Linux/GuardDeeds/DeviceRelief.h"
#include "Platform/Linux/GuardDeeds/DisplayRelief.h"
#include "Platform/Linux/GuardDeeds/JackRelief.h"
#include "Platform/Linux/GuardDeeds/JackSilence.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include <poll.h>
#include <sys/socket.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

using namespace tavro::guard;
using Clock = std::chrono::steady_clock;

class Program {
public:
    explicit Program(const std::string& display) : display_(display), devices_(guarded_) {}

    /// Returns when the program that is guarded has ended.
    void guard() {
        while (awaitMessages() && takeMessages()) {
            perform(watch_.judge(Clock::now()));
        }
        perform(watch_.atEnd());
    }

private:
    [[nodiscard]] bool awaitMessages() const {
        auto milliseconds = -1;
        if (const auto next = watch_.nextJudgement()) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(*next - Clock::now());
            milliseconds = static_cast<int>(std::max<std::int64_t>(0, left.count()));
        }
        pollfd input{.fd = STDIN_FILENO, .events = POLLIN, .revents = 0};
        return poll(&input, 1, milliseconds) >= 0 || errno == EINTR;
    }

    /// All that have come: on a busy machine the beats may be there, and this process late. False at the end.
    [[nodiscard]] bool takeMessages() {
        // Names of ports are short, and nobody has thousands of receivers.
        std::array<char, 65536> text{};
        while (true) {
            const auto size = recv(STDIN_FILENO, text.data(), text.size(), MSG_DONTWAIT);
            if (size <= 0) {
                return size < 0 && (errno == EAGAIN || errno == EINTR);
            }
            const std::string_view message(text.data(), static_cast<std::size_t>(size));
            perform(watch_.take(message, Clock::now()));
            if (message == std::string_view(&message::mainBeat, 1)) {
                tell(message::answer);
            }
        }
    }

    void perform(const GuardWatch::Due& due) const {
        const auto& orders = watch_.orders();
        if (due.givesKeyboardBack) {
            // Told first: a thread of the program that still lives is not to type on the copies any more.
            tell(message::keyboardGivenBack);
            display_.endConnectionOf(orders.connection);
            devices_.giveBack(orders.keyboards, orders.copies);
        }
        if (due.givesKeyboardBack || due.restoresRepeats) {
            display_.restoreRepeats(orders.repeats);
        }
        if (due.restoresRepeats) {
            tell(message::repeatsRestored);
        }
        if (due.silences) {
            tell(message::silenced);
            silence(orders.receivers);
        }
    }

    static void tell(char message) {
        // A program that is stopped takes no more, and one that has ended nothing.
        [[maybe_unused]] const auto sent = send(STDIN_FILENO, &message, 1, MSG_DONTWAIT | MSG_NOSIGNAL);
    }

    /// In a process of its own: a server may take seconds to let a client in, and this one has to go on
    /// answering.
    void silence(const std::vector<std::string>& receivers) const {
        if (receivers.empty() || fork() != 0) {
            return;
        }
        // A server that does not answer holds this process for as long, and no longer.
        constexpr unsigned int longestSeconds = 60;
        std::signal(SIGALRM, SIG_DFL);
        alarm(longestSeconds);
        if (const auto ports = those("jack ", receivers); !ports.empty()) {
            JackRelief::cutOffStopped(guarded_);
            JackSilence::send(ports);
        }
        AlsaSilence::send(those("alsa ", receivers));
        _exit(EXIT_SUCCESS);
    }

    static std::vector<std::string> those(std::string_view kind, const std::vector<std::string>& receivers) {
        std::vector<std::string> found;
        for (const auto& receiver : receivers) {
            if (receiver.starts_with(kind)) {
                found.push_back(receiver.substr(kind.size()));
            }
        }
        return found;
    }

    const pid_t guarded_ = getppid();
    GuardWatch watch_;
    DisplayRelief display_;
    DeviceRelief devices_;
};

} // namespace

int main(int argc, char** argv) {
    // What ends or stops the program must not do so with the one that acts for it; it ends with its input.
    for (const auto signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE, SIGTSTP, SIGTTIN, SIGTTOU}) {
        std::signal(signal, SIG_IGN);
    }
    // The children that send the panic are not waited for.
    std::signal(SIGCHLD, SIG_IGN);
    Program(argc > 1 ? argv[1] : "").guard();
    return EXIT_SUCCESS;
}
