"""A display with two screens: the keys of a program on the other one play as well."""

import unittest

from harness.global_play import ON, GlobalPlayTest
from harness.second_screen import SecondScreen
from harness.terminal import Terminal


class SecondScreenTest(GlobalPlayTest):
    SCREENS = 2

    def test_keys_typed_on_the_other_screen_play_and_others_pass(self):
        first = self.terminal
        other_screen = SecondScreen(self.sandbox)
        with other_screen.for_new_programs():
            second = Terminal(self.sandbox, other_screen)
        self.play_behind_the_terminal()
        other_screen.activate(second.window)
        self.terminal = second
        self.typist.tap("a", "Control_L e", "Shift_L s", "Tab")
        self.assert_played("a", "s")
        self.assert_typed(b"\x05\t")
        self.typist.tap("grave", "q", "grave", "d")
        self.application.wait_for_global_play(ON)
        self.assert_played("d")
        self.assert_typed(b"q")
        # And on the first one as ever.
        self.terminal = first
        self.show_terminal()
        self.typist.tap("a")
        self.assert_played("a")
        self.assert_typed(b"")


if __name__ == "__main__":
    unittest.main()
