"""The program stops answering while a chord is latched and other programs' keys are played: the keyboard is the
user's again, and nothing goes on sounding."""

import os
import signal
import unittest

from harness.global_play import ON, GlobalPlayTest
from harness.processes import IN_ITS_OWN_GROUP, processes, state_of
from harness.silence import PANIC, sounding
from harness.threads import HungThread, thread_named
from harness.waiting import wait_for

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


class StopTest(GuardTest):
    def check_stop(self):
        connections = self.recorder.connections_made()
        os.kill(self.pid, signal.SIGSTOP)
        self.assert_keyboard_is_the_users()
        self.assert_silent()
        self.assert_panic()
        os.kill(self.pid, signal.SIGCONT)
        # The server has gone on without the program, which comes back as after the server's end.
        wait_for(lambda: self.recorder.connections_made() > connections, "the program's port")
        self.assert_plays_again()

    def test_stopped(self):
        self.latch_a_chord()
        self.check_stop()
        # And once more, by the same guard.
        self.check_stop_of_the_next_chord()

    def check_stop_of_the_next_chord(self):
        self.assertEqual(self.wait_for_guard(), self.guard)
        self.check_stop()

    def test_stopped_after_the_guard_was_killed(self):
        self.latch_a_chord()
        self.replace_guard(signal.SIGKILL)
        self.check_stop()

    def test_stopped_after_the_guard_was_stopped(self):
        self.latch_a_chord()
        self.replace_guard(signal.SIGSTOP)
        self.check_stop()

    def test_stopped_by_the_terminal(self):
        # Nobody could let a program go on that has no shell in another group, so that it would not stop.
        self.latch_a_chord(wrapper=IN_ITS_OWN_GROUP)
        os.kill(self.pid, signal.SIGTSTP)
        wait_for(lambda: state_of(self.pid) == "T", "the program to stop")
        # In order, by itself: the guard has nothing to do.
        self.assert_keyboard_is_the_users()
        self.assert_silent()
        self.assertEqual(self.recorder.messages()[-len(PANIC) :], PANIC)
        before = len(self.recorder.messages())
        os.kill(self.pid, signal.SIGCONT)
        self.assert_plays_again()
        self.assertEqual([message[0] for message in self.recorder.messages()[before:]], [0x90])

    def test_stopped_with_only_the_hotkey_taken(self):
        self.play_behind_the_terminal()
        self.typist.tap("grave")
        self.wait_until_released()
        os.kill(self.pid, signal.SIGSTOP)
        # This one goes to the program, and with it the keyboard, which waits for an answer.
        self.typist.tap("grave", "x")
        self.assert_typed(b"x")
        self.assert_keyboard_is_the_users()
        os.kill(self.pid, signal.SIGCONT)
        # By way of the window: nothing tells when the hotkey is taken again elsewhere.
        self.display.activate(self.application.window)
        self.typist.tap("grave")
        self.application.wait_for_global_play(ON)
        self.show_terminal()
        self.typist.tap("g")
        self.assert_played("g")
        self.assert_typed(b"")


class HangTest(GuardTest):
    def check_hang(self, thread):
        hung = HungThread(thread)
        self.assert_keyboard_is_the_users()
        self.assert_silent()
        hung.let_go()
        self.assert_plays_again()

    def test_main_thread_hangs(self):
        self.latch_a_chord()
        self.check_hang(self.pid)

    def test_main_thread_hangs_while_the_window_is_played(self):
        self.play({"holdMode": True})
        self.display.tap("a", "d")
        wait_for(lambda: len(sounding(self.recorder.messages())) == 2, "the chord")
        hung = HungThread(self.pid)
        self.assert_silent()
        hung.let_go()
        self.display.tap("g")
        wait_for(lambda: sounding(self.recorder.messages()) == {(0, 64)}, "the next note")

    def test_tap_thread_hangs(self):
        self.latch_a_chord()
        self.check_hang(thread_named(self.pid, "tavro-tap"))

    def test_threads_hang_after_the_guard_was_replaced(self):
        self.latch_a_chord()
        self.replace_guard(signal.SIGKILL)
        self.check_hang(self.pid)
        self.replace_guard(signal.SIGSTOP)
        self.check_hang(thread_named(self.pid, "tavro-tap"))


class EndTest(GuardTest):
    def assert_ended(self):
        self.application.program.wait_for_end()
        self.assert_keyboard_is_the_users()
        self.assert_silent()
        self.assert_panic()
        wait_for(lambda: not processes(GUARD, self.sandbox), "the end of the guard")

    def test_killed(self):
        self.latch_a_chord()
        os.kill(self.pid, signal.SIGKILL)
        self.assert_ended()

    def test_killed_after_the_guard_was_replaced(self):
        self.latch_a_chord()
        self.replace_guard(signal.SIGSTOP)
        self.replace_guard(signal.SIGKILL)
        os.kill(self.pid, signal.SIGKILL)
        self.assert_ended()

    def test_killed_with_a_stopped_guard_frees_the_keyboard(self):
        self.latch_a_chord()
        os.kill(self.guard, signal.SIGSTOP)
        os.kill(self.pid, signal.SIGKILL)
        self.application.program.wait_for_end()
        self.typist.tap("a", "grave", "s", "1")
        self.assert_typed(b"a`s1")
        os.kill(self.guard, signal.SIGCONT)
        self.assert_ended()

    def test_crashed(self):
        self.latch_a_chord()
        os.kill(self.pid, signal.SIGSEGV)
        self.assert_ended()

    def test_quit_by_the_terminal(self):
        self.latch_a_chord()
        os.kill(self.pid, signal.SIGQUIT)
        self.assertEqual(self.application.program.wait_for_end(), 0)
        self.assert_ended()
        # By the program itself, in order: the panic came once.
        self.assertEqual(self.recorder.messages().count(PANIC[0]), 1)

    def test_display_ends(self):
        self.latch_a_chord()
        self.typist.close()
        self.display.end_server()
        self.application.program.wait_for_end()
        self.assert_silent()
        messages = self.recorder.messages()
        # By the program itself, whatever becomes of the guard.
        own = messages.index(PANIC[0])
        self.assertCountEqual(messages[own - 2 : own], [[0x80, 60, 0], [0x80, 62, 0]])
        self.assertEqual(messages[own : own + len(PANIC)], PANIC)
        wait_for(lambda: not processes(GUARD, self.sandbox), "the end of the guard")

    def test_killed_while_the_window_is_played(self):
        self.play({"holdMode": True})
        self.display.tap("a", "d")
        wait_for(lambda: len(sounding(self.recorder.messages())) == 2, "the chord")
        os.kill(self.pid, signal.SIGKILL)
        self.application.program.wait_for_end()
        self.assert_silent()
        self.assert_panic()

    def test_farewell_leaves_nothing_to_do(self):
        self.latch_a_chord()
        os.kill(self.pid, signal.SIGTERM)
        self.assertEqual(self.application.program.wait_for_end(), 0)
        self.assert_ended()
        self.assertEqual(self.recorder.messages().count(PANIC[0]), 1)


if __name__ == "__main__":
    unittest.main()
