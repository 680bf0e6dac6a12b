"""The program ends while keys are held: nothing goes on sounding."""

import signal
import unittest

from harness.stage import StageTest

SILENCE = [
    [0xB0 | channel, controller, 0] for channel in range(16) for controller in (123, 120)
]


class QuittingTest(StageTest):
    def test_closing_the_window_silences_held_notes(self):
        self._hold_two_keys()
        self.display.tap("alt+F4")
        self._assert_silenced()

    def test_termination_silences_held_notes(self):
        self._hold_two_keys()
        self.application.program.process.send_signal(signal.SIGTERM)
        self._assert_silenced()

    def test_an_interrupt_from_the_terminal_silences_held_notes(self):
        self._hold_two_keys()
        self.application.program.process.send_signal(signal.SIGINT)
        self._assert_silenced()

    def test_the_end_of_the_terminal_silences_held_notes(self):
        self._hold_two_keys()
        self.application.program.process.send_signal(signal.SIGHUP)
        self._assert_silenced()

    def test_signals_in_a_row_silence_once(self):
        self._hold_two_keys()
        for end in (signal.SIGINT, signal.SIGTERM, signal.SIGINT):
            self.application.program.process.send_signal(end)
        self._assert_silenced()

    def test_quitting_from_the_menu_silences_held_notes(self):
        self._hold_two_keys()
        self.display.tap("ctrl+q")
        self._assert_silenced()

    def test_closing_the_window_from_the_menu_silences_held_notes(self):
        self._hold_two_keys()
        self.display.tap("ctrl+w")
        self._assert_silenced()

    def _hold_two_keys(self):
        self.play()
        self.display.press("a", "s")
        self.assert_notes([("on", 60), ("on", 61)])

    def _assert_silenced(self):
        self.assertEqual(self.application.program.wait_for_end(), 0)
        messages = self.recorder.wait_for_messages(4 + len(SILENCE))[2:]
        self.assertCountEqual(messages[:2], [[0x80, 60, 0], [0x80, 61, 0]])
        self.assertEqual(messages[2:], SILENCE)


if __name__ == "__main__":
    unittest.main()
