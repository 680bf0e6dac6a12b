"""Random typing while others grab the keyboard, windows come to the front and the keymap changes."""

import unittest

import test_global_play_stress
from harness.disturbed_typing import RESERVED, DisturbedTyping
from harness.keys import PLAYING_KEYS
from harness.sandbox import tool
from harness.x_client import KeyHolder

NEW_SYMBOLS = (
    ("xmodmap", "-e", "add mod3 = Scroll_Lock"),
    ("xmodmap", "-e", "remove mod3 = Scroll_Lock"),
    ("xmodmap", "-e", "keycode 39 = s S"),
)
NEW_KEYMAPS = (
    ("setxkbmap", "-layout", "us", "-option", "compose:rctrl"),
    ("setxkbmap", "-layout", "us", "-option", ""),
)


class DisturbedStressTest(test_global_play_stress.StressTest):
    EVENTS = 6_000
    FEWEST = 5

    def setUp(self):
        super().setUp()
        self.desktop = self.client(KeyHolder)
        self.desktop.hold(RESERVED)
        self.lock = self.client(KeyHolder)

    def make_typing(self):
        self.typing = DisturbedTyping(self.random, self.typist, is_on=True, stage=self)
        return self.typing

    def change_symbols(self, random):
        self._run(*random.choice(NEW_SYMBOLS))

    def change_keymap(self, random):
        """Not while keys are held: with the keymap the server returns to its own idea of how soon they repeat."""
        self._run(*random.choice(NEW_KEYMAPS))
        self.display.keep_keys_from_repeating()

    def _run(self, program, *arguments):
        done = self.sandbox.run(tool(program), *arguments)
        self.assertEqual(done.returncode, 0, done.stderr)

    # What repeats besides the playing keys changes with the keymap.

    def wait_until_captured(self):
        self.wait_for_repeats(set())

    def wait_until_released(self):
        self.wait_for_repeats(set(PLAYING_KEYS))

    def play_round(self):
        is_judged = super().play_round()
        for program, presses in self.typing.taken.items():
            self.assertEqual(program.presses(), presses)
        return is_judged

    def put_in_order(self, typing, messages):
        # Keys of the window and of the tap that end together do so in any order; each note keeps its own.
        return sorted(messages, key=lambda message: message[1])


if __name__ == "__main__":
    unittest.main()
