#include "GuardedPlayer.h"

#include "Concurrency/MainActor.h"
#include "Expectations.h"
#include "Performance/GlobalKeyboardController.h"
#include "Performance/GuardLink.h"
#include "Performance/OrderlyStop.h"
#include "Performance/PerformanceController.h"
#include "Platform/Linux/Alsa/MidiSystemAdapter.h"
#include "Platform/Linux/Evdev/KeyboardTapAdapter.h"
#include "Platform/Linux/Guard/GuardProcess.h"
#include "Platform/Qt/ProcessSignals.h"
#include "Platform/Qt/QtMainActor.h"
#include "Synthesizer.h"

#include <QCoreApplication>

#include <array>
#include <atomic>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <optional>

#include <sys/syscall.h>
#include <sys/wait.h>
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

void selectSynthesizer(MidiOutputManager& midi) {
    for (const auto& destination : midi.destinations()) {
        if (destination.name == Synthesizer::name) {
            midi.setSelectedDestinationID(destination.id);
        }
    }
}

PerformanceState latchingChords() {
    PerformanceState state;
    state.holdMode = true;
    state.chordMode = ChordMode::triad;
    return state;
}

/// The program without its window.
int play() {
    // A shell makes such a group for each of its jobs; in its parent's group it could not be stopped.
    setpgid(0, 0);
    std::signal(hangSignal, hangHere);
    std::signal(goOnSignal, goOnThere);
    int count = 1;
    std::array<char, 6> name{"proof"};
    std::array<char*, 2> arguments{name.data(), nullptr};
    const QCoreApplication application(count, arguments.data());
    QtMainActor mainActor;
    alsa::MidiSystemAdapter system(mainActor);
    MidiOutputManager midi(system, mainActor);
    selectSynthesizer(midi);
    PerformanceController performance(midi, mainActor, latchingChords());
    performance.setPlayingUnfocused(true);
    // Built beside this one.
    const auto folder = fs::read_symlink("/proc/self/exe").parent_path();
    guard::GuardProcess guard(folder / "tavro-guard", {});
    evdev::KeyboardTapAdapter tap({}, &guard);
    GlobalKeyboardController keyboard(tap, mainActor);
    keyboard.onKeyDown = [&](Character key) { performance.handleKeyDown(key); };
    keyboard.onKeyUp = [&](Character key) { performance.handleKeyUp(key); };
    keyboard.onPanic = [&] { performance.panic(); };
    GuardLink link(guard, mainActor, midi);
    link.onDeeds = [&](const Guard::Deeds& /*deeds*/) { performance.panic(); };
    link.setBusy(true);
    std::optional<posix::ProcessSignals> signals;
    OrderlyStop orderlyStop(
        keyboard, performance, link, mainActor,
        {.stopNow = [&] { signals->stopNow(); }, .tellGuard = [&] { link.setBusy(true); }});
    signals.emplace(&QCoreApplication::quit, [&] { orderlyStop.begin(); });
    keyboard.setEnabled(true);
    if (!keyboard.isEnabled()) {
        return 1;
    }
    const auto status = QCoreApplication::exec();
    keyboard.stop();
    performance.shutDown();
    return status;
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

void GuardedPlayer::stopInOrder() const {
    signal(SIGTSTP);
    waitFor(
        [&] {
            usleep(10'000);
            siginfo_t news{};
            return waitid(P_PID, static_cast<id_t>(process_.id()), &news, WSTOPPED | WNOHANG) == 0 &&
                   news.si_pid == process_.id();
        },
        "the stop");
}

int GuardedPlayer::waitForEnd() {
    return process_.wait();
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
