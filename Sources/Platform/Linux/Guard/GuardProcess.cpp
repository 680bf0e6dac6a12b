#include "Platform/Linux/Guard/GuardProcess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <iostream>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tavro::guard {

namespace {

using namespace std::chrono_literals;

/// As long as the program itself would be given: a guard that is not there in time is of no use.
constexpr auto answerPatience = 1s;
constexpr auto startInterval = 1s;
constexpr auto restorePatience = 500ms;
/// The guard has nothing to do at a farewell but to restore repeats.
constexpr auto farewellPatience = 500ms;

/// The process, or -1.
pid_t spawn(const std::string& program, const std::string& display, int input) {
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, input, STDIN_FILENO);
    // Who reads what the program writes waits for the program's end, not for the guard's.
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    // Whatever else of the program's stayed open in the guard would look alive after the program's end.
    posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    // A signal to the program's whole group or terminal must not reach the guard, not even while it starts.
    sigset_t blocked;
    sigemptyset(&blocked);
    for (const auto signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP}) {
        sigaddset(&blocked, signal);
    }
    posix_spawnattr_setsigmask(&attributes, &blocked);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK);
    std::string name = program;
    std::string argument = display;
    const std::array<char*, 3> arguments{name.data(), display.empty() ? nullptr : argument.data(), nullptr};
    pid_t process = -1;
    const auto error = posix_spawn(&process, program.c_str(), &files, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    return error == 0 ? process : -1;
}

bool endsWithin(pid_t process, std::chrono::milliseconds patience) {
    const posix::FileDescriptor handle(static_cast<int>(syscall(SYS_pidfd_open, process, 0)));
    pollfd end{.fd = handle.number(), .events = POLLIN, .revents = 0};
    return handle.isOpen() && poll(&end, 1, static_cast<int>(patience.count())) == 1;
}

} // namespace

GuardProcess::GuardProcess(std::string program, std::string display)
    : program_(std::move(program)), display_(std::move(display)) {
    start();
}

GuardProcess::~GuardProcess() {
    // Without a farewell the guard finds out by itself that this process has ended.
    if (process_ >= 0 && saysFarewell_) {
        static_cast<void>(tell({&message::farewell, 1}));
        stop(farewellPatience);
    }
}

template <typename Change>
void GuardProcess::change(Change change) {
    const std::scoped_lock lock(mutex_);
    auto changed = orders_;
    change(changed);
    if (changed != orders_) {
        orders_ = std::move(changed);
        areOrdersTold_ = false;
        keepAlive();
    }
}

void GuardProcess::entrustReceivers(std::vector<std::string> receivers) {
    change([&](GuardOrders& orders) { orders.receivers = std::move(receivers); });
}

void GuardProcess::withholdFarewell() {
    saysFarewell_ = false;
}

void GuardProcess::expectBeats(bool expects) {
    change([&](GuardOrders& orders) { orders.expectsMain = expects; });
}

void GuardProcess::entrustRepeats(const std::vector<unsigned>& keys) {
    change([&](GuardOrders& orders) { orders.repeats = keys; });
}

void GuardProcess::entrustConnection(std::uint32_t resource) {
    change([&](GuardOrders& orders) { orders.connection = resource; });
}

void GuardProcess::entrustDevices(const std::vector<int>& keyboards, const std::vector<int>& copies) {
    change([&](GuardOrders& orders) {
        orders.keyboards = keyboards;
        orders.copies = copies;
    });
}

void GuardProcess::expectTapBeats(bool expects) {
    change([&](GuardOrders& orders) {
        if (expects && !orders.expectsTap) {
            // What was given back before was another tap's.
            isKeyboardGone_ = false;
        }
        orders.expectsTap = expects;
    });
}

void GuardProcess::restoreRepeats() {
    const std::scoped_lock lock(mutex_);
    keepAlive();
    if (orders_.repeats.empty()) {
        return;
    }
    if (!restoresRepeatsInTime()) {
        restart();
        tellOrders();
        static_cast<void>(restoresRepeatsInTime());
    }
    orders_.repeats.clear();
    tellOrders();
}

bool GuardProcess::restoresRepeatsInTime() {
    areRepeatsRestored_ = false;
    if (!tell({&message::restoreRepeats, 1})) {
        return false;
    }
    const auto end = Clock::now() + restorePatience;
    while (process_ >= 0 && !areRepeatsRestored_) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
        if (left <= 0) {
            return false;
        }
        pollfd answer{.fd = socket_.number(), .events = POLLIN, .revents = 0};
        poll(&answer, 1, static_cast<int>(left));
        listen();
    }
    return areRepeatsRestored_;
}

Guard::Deeds GuardProcess::beat() {
    const std::scoped_lock lock(mutex_);
    keepAlive();
    if (tell({&message::mainBeat, 1}) && !unansweredSince_) {
        unansweredSince_ = Clock::now();
    }
    return std::exchange(deeds_, {});
}

bool GuardProcess::tapBeat() {
    const std::scoped_lock lock(mutex_);
    listen();
    if (const auto now = Clock::now(); now - lastTapBeat_ >= beatInterval / 2) {
        lastTapBeat_ = now;
        keepAlive();
        static_cast<void>(tell({&message::tapBeat, 1}));
    }
    return std::exchange(isKeyboardGone_, false);
}

int GuardProcess::descriptor() const {
    const std::scoped_lock lock(mutex_);
    return socket_.number();
}

void GuardProcess::keepAlive() {
    listen();
    const auto now = Clock::now();
    const auto isSilent = unansweredSince_ && now - *unansweredSince_ >= answerPatience;
    if (isSilent || (process_ < 0 && now - lastStart_ >= startInterval)) {
        restart();
    }
    if (!areOrdersTold_) {
        tellOrders();
    }
}

void GuardProcess::start() {
    lastStart_ = Clock::now();
    areOrdersTold_ = false;
    unansweredSince_.reset();
    // Messages with their borders, and writing to a guard that is gone does not end the program. No other
    // child may keep this end open, or the guard would wait for that one.
    std::array<int, 2> ends{-1, -1};
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) == 0) {
        socket_ = posix::FileDescriptor(ends[0]);
        const posix::FileDescriptor guardsEnd(ends[1]);
        process_ = spawn(program_, display_, guardsEnd.number());
    }
    if (process_ >= 0) {
        // So that it may take the files of the keyboards when this program does not answer. Where the system
        // asks for no such leave, there is no such call.
        prctl(PR_SET_PTRACER, static_cast<unsigned long>(process_), 0, 0, 0);
        return;
    }
    socket_ = {};
    if (!std::exchange(hasComplained_, true)) {
        std::cerr
            << "TAVRO: " << program_
            << " cannot be started; if TAVRO is killed or hangs while it plays, notes may go on sounding and "
               "keys may no longer repeat\n";
    }
}

void GuardProcess::stop(std::chrono::milliseconds patience) {
    socket_ = {};
    if (process_ < 0) {
        return;
    }
    // One that was stopped itself never ends, and ends with this.
    if (patience == 0ms || !endsWithin(process_, patience)) {
        kill(process_, SIGKILL);
    }
    while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
    }
    process_ = -1;
}

void GuardProcess::restart() {
    stop(0ms);
    start();
}

void GuardProcess::tellOrders() {
    areOrdersTold_ = tell(orders_.text());
}

bool GuardProcess::tell(std::string_view text) {
    if (process_ < 0) {
        return false;
    }
    if (send(socket_.number(), text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT) ==
        static_cast<ssize_t>(text.size())) {
        return true;
    }
    if (errno != EAGAIN && errno != EINTR) {
        // It has been ended. A new one follows with the next change or beat.
        stop(0ms);
    }
    return false;
}

void GuardProcess::listen() {
    std::array<char, 16> text{};
    while (process_ >= 0) {
        const auto size = recv(socket_.number(), text.data(), text.size(), MSG_DONTWAIT);
        if (size < 0) {
            return;
        }
        if (size == 0) {
            stop(0ms);
            return;
        }
        switch (text.front()) {
        case message::answer:
            unansweredSince_.reset();
            break;
        case message::keyboardGivenBack:
            deeds_.gaveKeyboardBack = true;
            isKeyboardGone_ = true;
            break;
        case message::silenced:
            deeds_.silenced = true;
            break;
        case message::repeatsRestored:
            areRepeatsRestored_ = true;
            break;
        default:
            break;
        }
    }
}

} // namespace tavro::guard
