"""Another window comes to the front while a key is held."""

import unittest

from harness.display import KeyWatch
from harness.stage import StageTest
from harness.waiting import wait_for


class FocusTest(StageTest):
    def test_held_note_ends_when_another_window_comes_to_the_front(self):
        self.play()
        other = KeyWatch(self.sandbox, self.display)
        elsewhere = self.display.wait_for_window("Elsewhere")
        self.display.activate(self.application.window)
        self.display.press("a")
        self.assert_notes([("on", 60)])
        self.display.activate(elsewhere)
        self.assert_notes([("on", 60), ("off", 60)])

        # The release, and keys pressed there, belong to the other window.
        self.display.release("a")
        self.display.tap("s")
        wait_for(lambda: other.releases() >= 2, "the keys in the other window")
        self.display.activate(self.application.window)
        self.display.tap("d")
        self.assert_notes([("on", 60), ("off", 60), ("on", 62), ("off", 62)])


if __name__ == "__main__":
    unittest.main()
