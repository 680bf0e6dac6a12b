#include "Check.h"
#include "ChildProcess.h"
#include "Concurrency/MainActor.h"
#include "Expectations.h"
#include "Performance/GlobalKeyboardController.h"
#include "Platform/Linux/Evdev/KeyboardTapAdapter.h"
#include "Platform/Linux/Session/SessionWatchAdapter.h"
#include "Platform/Qt/QtMainActor.h"
#include "Spectator.h"
#include "Terminal.h"
#include "TestKeyboard.h"

#include <QCoreApplication>

#include <array>
#include <cstdlib>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace tavro::proof {

namespace {

constexpr int ownNumber = 11;
constexpr int otherNumber = 12;

/// Global Play in a login on the terminal, for as long as the process lives.
int playOn(const std::string& terminal) {
    setsid();
    const auto file = open(terminal.c_str(), O_RDWR | O_NOCTTY);
    if (file < 0 || ioctl(file, TIOCSCTTY, 0) != 0) {
        return 1;
    }
    unsetenv("XDG_VTNR");
    int count = 1;
    std::array<char, 6> name{"proof"};
    std::array<char*, 2> arguments{name.data(), nullptr};
    const QCoreApplication application(count, arguments.data());
    QtMainActor mainActor;
    evdev::KeyboardTapAdapter tap;
    GlobalKeyboardController keyboard(tap, mainActor);
    linuxos::SessionWatchAdapter session;
    session.start([&keyboard](bool isInFront) {
        using Pause = GlobalKeyboardController::Pause;
        isInFront ? keyboard.resume(Pause::session) : keyboard.pause(Pause::session);
    });
    keyboard.setEnabled(true);
    return keyboard.isEnabled() ? QCoreApplication::exec() : 2;
}

/// Types two playing keys and Tab, and returns what of them has come to the terminal.
std::string typeInto(Terminal& terminal, TestKeyboard& keyboard) {
    keyboard.tap(KEY_A);
    keyboard.tap(KEY_S);
    keyboard.tap(KEY_TAB);
    std::string typed;
    waitFor(
        [&] {
            typed += terminal.take();
            return typed.ends_with('\t');
        },
        "the tabulator on " + terminal.path());
    // Of the line breaks from before some were on their way.
    return typed.substr(typed.find_last_of('\r') + 1);
}

void captureFollowsTheActiveTerminal() {
    TestKeyboard keyboard("A");
    Spectator spectator;
    Terminal own(ownNumber);
    Terminal other(otherNumber);
    own.activate();
    ChildProcess player([&] { return playOn(own.path()); });
    spectator.waitForWayBy("A'", keyboard);
    expectEqual(typeInto(own, keyboard), "\t", "what is typed on the own terminal");

    other.activate();
    spectator.waitForWayBy("A", keyboard);
    expectEqual(typeInto(other, keyboard), "as\t", "what is typed on another login's terminal");

    own.activate();
    spectator.waitForWayBy("A'", keyboard);
    expectEqual(typeInto(own, keyboard), "\t", "what is typed on the own terminal again");
}

} // namespace

std::vector<Check> terminalChecks() {
    return {
        {"capture_follows_the_active_terminal", captureFollowsTheActiveTerminal},
    };
}

} // namespace tavro::proof
