"""The program stops answering while a chord is latched and other programs' keys are played: the keyboard is the
user's again, and nothing goes on sounding."""

import os
import signal
import time
import unittest

from harness.global_play import ON
from harness.guard import GUARD, GuardTest
from harness.processes import IN_ITS_OWN_GROUP, processes, state_of
from harness.silence import PANIC, sounding
from harness.threads import HungThread, thread_named
from harness.waiting import wait_for


class StopTest(GuardTest):
    def check_stop(self):
        connections = self.recorder.connections_made()
        self.stop_program()
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
        self.stop_program()
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

    def test_late_guard_does_not_undo_what_the_next_tap_does(self):
        self.latch_a_chord()
        hung = HungThread(thread_named(self.pid, "tavro-tap"))
        self.wait_until_released()
        os.kill(self.guard, signal.SIGSTOP)
        # The tap that has been cut off asks for the repeats, and is replaced.
        hung.let_go()
        self.wait_for_repeats(set())
        try:
            os.kill(self.guard, signal.SIGCONT)
        except ProcessLookupError:
            # It has been replaced.
            pass
        for _ in range(20):
            self.assertEqual(self.repeating(), set())
            time.sleep(0.05)
        self.assert_plays_again()
        self.typist.tap("grave")
        self.wait_until_released()

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
