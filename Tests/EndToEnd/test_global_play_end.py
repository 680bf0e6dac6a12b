"""The program comes to its end, or Global Play does, by every road: the keyboard is everybody's again."""

import os
import signal
import unittest

from harness.global_play import OFF, ON, GlobalPlayTest
from harness.processes import processes
from harness.sandbox import tool
from harness.waiting import wait_for

GUARD = "tavro-guard"


class EndTest(GlobalPlayTest):
    def assert_keyboard_types_and_repeats(self):
        self.wait_until_released()
        self.typist.tap("a", "Shift_L s", "Control_L d", "grave", "1")
        self.assert_typed(b"aS\x04`1")
        self.display.let_keys_repeat()
        for key in "af":
            self.typist.press(key)
            wait_for(lambda: self.terminal.received().startswith(5 * key.encode()), f"repeats of {key}")
            self.typist.release(key)
            self.forget_typed()
        self.display.keep_keys_from_repeating()

    def assert_no_guard_is_left(self):
        wait_for(lambda: not processes(GUARD, self.sandbox), "the end of the guard")


class ProgramEndTest(EndTest):
    def play_and_hold_keys(self, wrapper=()):
        self.play_behind_the_terminal(wrapper=wrapper)
        # Or its absence later would show nothing.
        wait_for(lambda: len(processes(GUARD, self.sandbox)) == 1, "the guard")
        self.typist.press("a", "s")
        self.assert_played(on="as")

    def test_killed(self):
        self.play_and_hold_keys()
        self.application.program.process.kill()
        self.application.program.wait_for_end()
        self.typist.release("a", "s")
        self.assert_keyboard_types_and_repeats()
        self.assert_no_guard_is_left()

    def test_killed_with_its_process_group(self):
        self.play_and_hold_keys([tool("setsid")])
        self.assertEqual(os.getpgid(self.application.program.pid), self.application.program.pid)
        os.killpg(self.application.program.pid, signal.SIGKILL)
        self.application.program.wait_for_end()
        self.typist.release("a", "s")
        self.assert_keyboard_types_and_repeats()
        self.assert_no_guard_is_left()

    def test_terminated(self):
        self.play_and_hold_keys()
        self.application.program.process.terminate()
        self.assertEqual(self.application.program.wait_for_end(), 0)
        self.assert_silenced()
        self.typist.release("a", "s")
        self.assert_keyboard_types_and_repeats()
        self.assert_no_guard_is_left()

    def test_closed_window(self):
        self.play_and_hold_keys()
        self.typist.release("a", "s")
        self.assert_played(off="as")
        self.show_application()
        self.typist.tap("Alt_L F4")
        self.assertEqual(self.application.program.wait_for_end(), 0)
        self.display.activate(self.terminal.window)
        self.assert_keyboard_types_and_repeats()
        self.assert_no_guard_is_left()

    def assert_silenced(self):
        messages = self.recorder.wait_for_messages(4)
        self.assertCountEqual(messages[2:4], [[0x80, 60, 0], [0x80, 61, 0]])


class EmergencyExitTest(EndTest):
    def test_emergency_exit_gives_the_keys_back(self):
        self.play_behind_the_terminal()
        self.typist.press("a", "d")
        self.assert_played(on="ad")
        self.typist.press("Shift_L", "Shift_R", "Escape")
        self.application.wait_for_global_play(OFF)
        self.recorder.wait_for_messages(4)
        self.typist.release("Escape", "Shift_R", "Shift_L", "d", "a")
        # Escape itself is everybody's; with Shift it types the same.
        self.assert_typed(b"\x1b")
        self.assertCountEqual(self.later_messages(2), [[0x80, 60], [0x80, 62]])
        self.assert_keyboard_types_and_repeats()

        # The hotkey has ended with it, outside. In the window all begins anew.
        self.assertEqual(self.application.global_play_texts()[-1], OFF)
        self.display.activate(self.application.window)
        self.typist.tap("grave")
        self.application.wait_for_global_play(ON)
        self.show_terminal()
        self.typist.tap("f")
        self.recorder.wait_for_messages(6)
        self.assertEqual(self.later_messages(4), [[0x90, 63], [0x80, 63]])
        self.assert_typed(b"")

    def later_messages(self, first):
        """Without the velocities."""
        return [message[:2] for message in self.recorder.messages()[first:]]


if __name__ == "__main__":
    unittest.main()
