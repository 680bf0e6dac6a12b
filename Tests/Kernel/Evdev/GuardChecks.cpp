#include "Check.h"
#include "Expectations.h"
#include "GuardedPlayer.h"
#include "Spectator.h"
#include "Synthesizer.h"
#include "TestKeyboard.h"

#include <csignal>
#include <functional>

namespace tavro::proof {

namespace {

/// A keyboard that a program with a guard has grabbed, who sees what gets through, and who hears what is
/// played.
class GuardStage {
public:
    GuardStage() { waitForWayBy("A'"); }

    Synthesizer synthesizer;
    GuardedPlayer player;
    TestKeyboard keyboard{"A"};
    Spectator spectator;

    void waitForWayBy(const std::string& device) { spectator.waitForWayBy(device, keyboard); }

    /// Expects that a playing key is the system's, and that nothing seems to be held.
    void expectFree() {
        waitForWayBy("A");
        static_cast<void>(spectator.takeKeys());
        keyboard.tap(KEY_Z);
        keyboard.tap(KEY_ENTER);
        spectator.look();
        expectEqual(spectator.takeKeys(), {"A 44 1", "A 44 0", "A 28 1", "A 28 0"}, "what others see");
        expectEqual(spectator.held(), {}, "the keys that others take for held");
    }

    /// Expects that a playing key is taken from the system.
    void expectTaken() {
        waitForWayBy("A'");
        static_cast<void>(spectator.takeKeys());
        keyboard.tap(KEY_Z);
        keyboard.tap(KEY_LEFT);
        waitFor(
            [&] {
                spectator.look();
                return spectator.latestDeviceOf(KEY_LEFT) == "A'";
            },
            "the key that passes");
        expectEqual(spectator.takeKeys(), {"A' 105 1", "A' 105 0"}, "what others see of the keys");
    }

    void expectSilence() {
        waitFor(
            [&] {
                spectator.look();
                return synthesizer.sounding().empty();
            },
            "silence");
    }

    /// Presses a key that plays, until its chord sounds, and one that passes.
    void hold() {
        const auto before = spectator.count(KEY_RIGHT, 1);
        keyboard.press(KEY_A);
        keyboard.press(KEY_RIGHT);
        waitFor(
            [&] {
                spectator.look();
                return spectator.count(KEY_RIGHT, 1) > before && synthesizer.sounding().size() > 2;
            },
            "the chord, and the key that passes");
    }

    void letGo() {
        keyboard.release(KEY_A);
        keyboard.release(KEY_RIGHT);
    }
};

/// The program does not answer from `begin` to `end`, with keys held all the while.
void checkSilence(GuardStage& stage, const std::function<void()>& begin, const std::function<void()>& end) {
    stage.hold();
    begin();
    stage.waitForWayBy("A");
    stage.expectSilence();
    stage.letGo();
    stage.expectFree();
    end();
    stage.expectTaken();
}

void checkStop(GuardStage& stage) {
    checkSilence(stage, [&] { stage.player.signal(SIGSTOP); }, [&] { stage.player.signal(SIGCONT); });
}

void checkHang(GuardStage& stage, const std::string& thread) {
    checkSilence(stage, [&] { stage.player.hang(thread); }, [&] { stage.player.goOn(); });
}

void stoppedProgramGivesTheKeyboardBack() {
    GuardStage stage;
    checkStop(stage);
    checkStop(stage);
}

void guardThatWasKilledOrStoppedIsReplaced() {
    GuardStage stage;
    stage.player.replaceGuard(SIGKILL);
    checkStop(stage);
    stage.player.replaceGuard(SIGSTOP);
    checkStop(stage);
}

void hungProgramGivesTheKeyboardBack() {
    GuardStage stage;
    checkHang(stage, GuardedPlayer::mainThread);
    checkHang(stage, GuardedPlayer::tapThread);
}

void programThatIsStoppedByItsTerminalGivesTheKeyboardBack() {
    GuardStage stage;
    checkSilence(stage, [&] { stage.player.stopInOrder(); }, [&] { stage.player.signal(SIGCONT); });
    checkSilence(stage, [&] { stage.player.stopInOrder(); }, [&] { stage.player.signal(SIGCONT); });
}

/// The program ends by the signal while keys are held.
void checkEnd(int signal, int status) {
    GuardStage stage;
    stage.hold();
    stage.player.signal(signal);
    stage.waitForWayBy("A");
    stage.expectSilence();
    stage.letGo();
    stage.expectFree();
    expectEqual(std::to_string(stage.player.waitForEnd()), std::to_string(status), "the end");
}

void programThatEndsLeavesNothing() {
    checkEnd(SIGQUIT, 0);
    checkEnd(SIGHUP, 0);
    checkEnd(SIGKILL, -SIGKILL);
}

void stoppedGuardHoldsNoKeyboard() {
    GuardStage stage;
    stage.hold();
    stage.player.signalGuard(SIGSTOP);
    stage.player.signal(SIGKILL);
    stage.waitForWayBy("A");
    stage.letGo();
    stage.expectFree();
    stage.player.signalGuard(SIGCONT);
}

} // namespace

std::vector<Check> guardChecks() {
    return {
        {"stopped_program_gives_the_keyboard_back", stoppedProgramGivesTheKeyboardBack},
        {"guard_that_was_killed_or_stopped_is_replaced", guardThatWasKilledOrStoppedIsReplaced},
        {"hung_program_gives_the_keyboard_back", hungProgramGivesTheKeyboardBack},
        {"program_that_is_stopped_by_its_terminal_gives_the_keyboard_back",
         programThatIsStoppedByItsTerminalGivesTheKeyboardBack},
        {"program_that_ends_leaves_nothing", programThatEndsLeavesNothing},
        {"stopped_guard_holds_no_keyboard", stoppedGuardHoldsNoKeyboard},
    };
}

} // namespace tavro::proof
