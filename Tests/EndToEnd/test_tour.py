"""The quick tour: a new user gets it by itself and can end it, and then it does not come again."""

import time
import unittest

from harness.stage import StageTest
from harness.waiting import wait_for

# On the button that goes on, from the middle of the window.
NEXT_BUTTON = (178, 197)
NEXT_COLOUR = 0xF2F4F6
# Several times as long as the tour lets a new user wait.
LONG_ENOUGH = 1.5


class TourTest(StageTest):
    def setUp(self):
        super().setUp()
        self.sandbox.begin_as_new_user()

    def test_comes_to_a_new_user_and_ends_with_escape(self):
        self.play()
        wait_for(self._is_shown, "the tour")
        # As long as it is there it has the keys.
        self.display.tap("a")
        self.assertTrue(self._is_shown())
        self.assertFalse(self._is_stored())
        self.display.tap("Escape")
        wait_for(lambda: not self._is_shown(), "the end of the tour")
        wait_for(self._is_stored, "the end of the tour among the settings")
        self.display.tap("s")
        self.assert_notes([("on", 61), ("off", 61)])

        self._restart()
        self._play_for_a_while()
        self.assertFalse(self._is_shown())

    def test_goes_from_step_to_step_with_the_return_key(self):
        self.play()
        wait_for(self._is_shown, "the tour")
        self.display.tap(*["Return"] * 5)
        self.assertTrue(self._is_shown())
        # It has the keys up to the last one.
        self.display.tap("a", "Return", "s")
        self.assert_notes([("on", 61), ("off", 61)])
        wait_for(self._is_stored, "the end of the tour among the settings")

    def test_comes_again_when_the_program_ended_before_the_user_had_ended_it(self):
        self.play()
        wait_for(self._is_shown, "the tour")
        self._restart()
        wait_for(self._is_shown, "the tour again")
        self.assertFalse(self._is_stored())

    def _restart(self):
        self.display.tap("alt+F4")
        self.assertEqual(self.application.program.wait_for_end(), 0)
        self.play()

    def _play_for_a_while(self):
        end = time.monotonic() + LONG_ENOUGH
        while time.monotonic() < end:
            before = len(self.recorder.messages())
            self.display.tap("d")
            self.recorder.wait_for_messages(before + 2)

    def _is_shown(self):
        window = self.application.window
        width, height = self.display.size(window)
        x, y = NEXT_BUTTON
        return self.display.screen.colour(window, width // 2 + x, height // 2 + y) == NEXT_COLOUR

    def _is_stored(self):
        return (
            self.sandbox.settings_file().exists()
            and self.sandbox.settings().get("TAVRO.TutorialCompleted.v1") is True
        )


if __name__ == "__main__":
    unittest.main()
