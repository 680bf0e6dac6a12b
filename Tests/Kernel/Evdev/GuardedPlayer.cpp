#include "GuardedPlayer.h"

#include "Concurrency/MainActor.h"
#include "Expectations.h"
#include "Performance/GlobalKeyboardController.h"
#include "Platform/Linux/Evdev/KeyboardTapAdapter.h"
#include "Platform/Linux/Guard/GuardProcess.h"
#include "Platform/Qt/QtMainActor.h"

#include <QCoreApplication>
#include <QTimer>

#include <array>
#include <atomic>
#include <csignal>
#include <filesystem>
#include <fstream>

#include <sys/syscall.h>
#include <unistd.h>

namespace tavro::proof {

namespace {

namespace fs = std::filesystem;

constexpr auto hangSignal = SIGUSR1;
constexpr auto goOnSignal = SIGUSR2;

std::atomic<bool> shallHang = false;

/// In whatever the thread was doing.
void hangHere(int /*signal*/) {
    shallHang = true;
    while (shallHang) {
        usleep(1000);
    }
}

void goOnThere(int /*signal*/) {
    shallHang = false;
}

int play() {
    std::signal(hangSignal, hangHere);
    std::signal(goOnSignal, goOnThere);
    int count = 1;
    std::array<char, 6> name{"proof"};
    std::array<char*, 2> arguments{name.data(), nullptr};
    const QCoreApplication application(count, arguments.data());
    QtMainActor mainActor;
    // Built beside this one.
    const auto folder = fs::read_symlink("/proc/self/exe").parent_path();
    guard::GuardProcess guard(folder / "tavro-guard", {});
    guard.expectBeats(true);
    QTimer beats;
    QObject::connect(&beats, &QTimer::timeout, [&guard] { static_cast<void>(guard.beat()); });
    beats.start(Guard::beatInterval);
    evdev::KeyboardTapAdapter tap({}, &guard);
    GlobalKeyboardController keyboard(tap, mainActor);
    keyboard.setEnabled(true);
    return keyboard.isEnabled() ? QCoreApplication::exec() : 1;
}

std::string firstLine(const fs::path& path) {
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    return line;
}

} // namespace

GuardedPlayer::GuardedPlayer() : process_(play), guard_(nextGuard(0)) {}

void GuardedPlayer::signal(int signal) const {
    ::kill(process_.id(), signal);
}

void GuardedPlayer::hang(const std::string& thread) const {
    const auto process = process_.id();
    for (const auto& folder : threads()) {
        const auto number = std::stoi(folder.filename());
        const auto isMeant = thread == mainThread ? number == process : firstLine(folder / "comm") == thread;
        if (isMeant) {
            syscall(SYS_tgkill, process, number, hangSignal);
            return;
        }
    }
    expect(false, "there is no thread " + thread);
}

void GuardedPlayer::goOn() const {
    signal(goOnSignal);
}

void GuardedPlayer::signalGuard(int signal) {
    ::kill(guard_, signal);
}

void GuardedPlayer::replaceGuard(int signal) {
    signalGuard(signal);
    guard_ = nextGuard(guard_);
}

std::vector<fs::path> GuardedPlayer::threads() const {
    std::vector<fs::path> folders;
    const auto folder = "/proc/" + std::to_string(process_.id()) + "/task";
    for (const auto& entry : fs::directory_iterator(folder)) {
        folders.push_back(entry.path());
    }
    return folders;
}

pid_t GuardedPlayer::nextGuard(pid_t otherThan) const {
    pid_t found = 0;
    waitFor(
        [&] {
            // Either thread may have started it.
            for (const auto& thread : threads()) {
                std::ifstream file(thread / "children");
                for (pid_t child = 0; file >> child;) {
                    // It has the name when it is more than a copy of its parent.
                    const auto name = firstLine("/proc/" + std::to_string(child) + "/comm");
                    found = child != otherThan && name == "tavro-guard" ? child : found;
                }
            }
            usleep(10'000);
            return found != 0;
        },
        "the guard");
    return found;
}

} // namespace tavro::proof
