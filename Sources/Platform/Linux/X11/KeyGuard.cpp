#include "Platform/Linux/X11/KeyGuard.h"

#include "Platform/Linux/X11/Repeat/RestoreOrders.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <iostream>
#include <utility>

#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tavro::x11 {

namespace {

/// 0, or the number of the error.
int spawn(pid_t& process, const std::string& program, const std::string& display, int input) {
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, input, STDIN_FILENO);
    // Whatever else of the program's stayed open in the guard would look alive after the program's end.
    posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    // A signal to the program's whole group or terminal must not reach the guard, not even while it starts.
    sigset_t blocked;
    sigemptyset(&blocked);
    for (const auto signal : {SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&blocked, signal);
    }
    posix_spawnattr_setsigmask(&attributes, &blocked);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK);
    std::string name = program;
    std::string argument = display;
    const std::array<char*, 3> arguments{name.data(), display.empty() ? nullptr : argument.data(), nullptr};
    const auto error = posix_spawn(&process, program.c_str(), &files, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    return error;
}

} // namespace

KeyGuard::KeyGuard(std::string program, std::string display)
    : program_(std::move(program)), display_(std::move(display)) {}

KeyGuard::~KeyGuard() {
    end();
}

void KeyGuard::entrust(const KeySet& keys) {
    if (process_ < 0 && keys.none()) {
        return;
    }
    if (process_ >= 0 && tell(keys)) {
        return;
    }
    // Somebody may have ended it; a new one knows nothing yet.
    end();
    if (keys.any() && (!start() || !tell(keys)) && !std::exchange(hasComplained_, true)) {
        std::cerr << "TAVRO: " << program_
                  << " cannot be started; if TAVRO is killed while it plays, keys will no longer repeat "
                     "(\"xset r on\" helps)\n";
    }
}

bool KeyGuard::start() {
    // A pair of sockets instead of a pipe: writing to a guard that is gone must not end the program. No other
    // child may keep this end open, or the guard would wait for that one.
    std::array<int, 2> ends{-1, -1};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        return false;
    }
    const auto error = spawn(process_, program_, display_, ends[1]);
    close(ends[1]);
    if (error != 0) {
        close(ends[0]);
        process_ = -1;
        return false;
    }
    input_ = ends[0];
    return true;
}

bool KeyGuard::tell(const KeySet& keys) const {
    const auto line = RestoreOrders::line(keys);
    return send(input_, line.data(), line.size(), MSG_NOSIGNAL | MSG_DONTWAIT) ==
           static_cast<ssize_t>(line.size());
}

void KeyGuard::end() {
    if (process_ < 0) {
        return;
    }
    close(std::exchange(input_, -1));
    while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
    }
    process_ = -1;
}

} // namespace tavro::x11
