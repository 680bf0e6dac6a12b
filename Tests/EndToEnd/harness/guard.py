import os
import signal

from .global_play import ON, GlobalPlayTest
from .processes import processes, state_of, states_of_threads
from .silence import PANIC, sounding
from .waiting import wait_for

GUARD = "tavro-guard"


class GuardTest(GlobalPlayTest):
    # As servers are by themselves. The other kind stands still with the one that is stopped, for everybody.
    SERVER_WAITS = False

    def latch_a_chord(self, wrapper=()):
        """Keys that ring after their release, and the program behind the terminal."""
        self.play_behind_the_terminal({"holdMode": True}, wrapper)
        self.typist.tap("a", "d")
        wait_for(lambda: len(sounding(self.recorder.messages())) == 2, "the chord")
        self.guard = self.wait_for_guard()
        self.assertEqual(sounding(self.recorder.messages()), {(0, 60), (0, 62)})

    def wait_for_guard(self, other_than=None):
        return wait_for(
            lambda: [found for found in processes(GUARD, self.sandbox) if found != other_than], "the guard"
        )[0]

    def replace_guard(self, end):
        """Ends or stops the guard, and waits until there is another one."""
        os.kill(self.guard, end)
        self.guard = self.wait_for_guard(other_than=self.guard)
        # It has heard what is entrusted to it once it waits for the next message.
        wait_for(lambda: state_of(self.guard) == "S", "the new guard to wait")

    def stop_program(self):
        """Its threads stop one after the other, on a busy machine after a while."""
        os.kill(self.pid, signal.SIGSTOP)
        wait_for(lambda: set(states_of_threads(self.pid)) == {"T"}, "the program to stop")

    def assert_keyboard_is_the_users(self):
        self.wait_until_released()
        # Neither kept by a grab that nobody answers nor by one that still plays.
        self.typist.tap("a", "grave", "s", "1")
        self.assert_typed(b"a`s1")

    def assert_silent(self):
        wait_for(
            lambda: not sounding(self.recorder.messages()),
            lambda: f"silence; there sounds {sounding(self.recorder.messages())}",
        )

    def assert_panic(self):
        """The guard has sent it, and sent it once."""
        wait_for(lambda: self.recorder.messages()[-len(PANIC) :] == PANIC, "the panic")

    def assert_plays_again(self):
        """The program goes on as before."""
        self.application.wait_for_global_play(ON)
        self.wait_until_captured()
        self.typist.tap("g")
        wait_for(lambda: sounding(self.recorder.messages()) == {(0, 64)}, "the next note")
        self.assert_typed(b"")

    @property
    def pid(self):
        return self.application.program.pid
