"""The menu and its shortcuts on a real window manager."""

import unittest

from harness.display import KeyWatch
from harness.stage import StageTest
from harness.windows import WindowProperties


class MenuTest(StageTest):
    def setUp(self):
        super().setUp()
        # There first, so that the program is in front of it.
        KeyWatch(self.sandbox, self.display)
        self.other = WindowProperties(self.sandbox, self.display.wait_for_window("Elsewhere"))
        self.play()
        self.window = WindowProperties(self.sandbox, self.application.window)

    def test_minimizes_the_window(self):
        self.display.tap("ctrl+m")
        self.window.wait_until_iconic()
        self.assertTrue(self.application.program.is_running())
        self._plays_when_it_is_back()

    def test_hides_the_application(self):
        self.display.tap("ctrl+h")
        self.window.wait_until_iconic()
        self.assertFalse(self.other.is_iconic())
        self._plays_when_it_is_back()

    def test_hides_the_others_and_shows_them_again(self):
        self.display.tap("ctrl+alt+h")
        self.other.wait_until_iconic()
        self.assertFalse(self.window.is_iconic())
        self.application.surface.click("menu")
        # The fourth entry shows all.
        self.display.tap("Down", "Down", "Down", "Down", "Return")
        self.other.wait_until_iconic(False)
        self.display.wait_for_focus(self.application.window)
        self.display.tap("a")
        self.assert_notes([("on", 60), ("off", 60)])

    def test_letters_with_control_play_nothing(self):
        self.display.tap("ctrl+a", "ctrl+c", "ctrl+s", "ctrl+v", "ctrl+x", "ctrl+z", "ctrl+shift+z", "d")
        self.assert_notes([("on", 62), ("off", 62)])

    def _plays_when_it_is_back(self):
        self.display.activate(self.application.window)
        self.window.wait_until_iconic(False)
        self.display.tap("a")
        self.assert_notes([("on", 60), ("off", 60)])


if __name__ == "__main__":
    unittest.main()
