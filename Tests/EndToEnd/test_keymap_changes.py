"""The keymap, the modifiers and the locks change while Global Play has the keys."""

import time
import unittest

from harness.global_play import ON, GlobalPlayTest
from harness.keyboard_tap import repeating_keys
from harness.keys import PLAYING_KEYS
from harness.sandbox import tool
from harness.waiting import wait_for
from harness.x_client import KeyHolder

# Longer than the server waits before it repeats a key, and more than a few repeats.
HOLD_SECONDS = 1.5


class ChangeTest(GlobalPlayTest):
    def change(self, program, *arguments):
        done = self.sandbox.run(tool(program), *arguments)
        self.assertEqual(done.returncode, 0, done.stderr)
        return done.stdout

    def load_keymap(self, *layout):
        """As desktops do it: compiled and sent to the server, which forgets by it which keys do not repeat."""
        source = self.sandbox.folder / "keymap.xkb"
        source.write_text(self.change("setxkbmap", "-print", *layout), encoding="utf-8")
        self.change("xkbcomp", "-w0", source, self.sandbox.environment["DISPLAY"])


class KeymapTest(ChangeTest):
    def _check_repeats_after(self, change, *arguments):
        self.play_behind_the_terminal()
        change(*arguments)
        self.wait_for_repeats(set())
        self.display.let_keys_repeat()
        self.typist.press("s")
        self.assert_played(on="s")
        self.typist.press("Control_L")
        time.sleep(HOLD_SECONDS)
        self.typist.release("s", "Control_L")
        self.display.keep_keys_from_repeating()
        self.assert_played(off="s")
        self.typist.tap("a", "Control_L e")
        self.assert_played("a")
        self.assert_typed(b"\x05")
        # And they do repeat where they are typed.
        self.display.activate(self.application.window)
        self.wait_for_repeats(set(PLAYING_KEYS))
        self.assertEqual(self.application.global_play_texts()[-1], ON)

    def test_played_keys_do_not_repeat_after_a_keymap_was_loaded(self):
        self._check_repeats_after(self.load_keymap, "-layout", "us")

    def test_played_keys_do_not_repeat_after_another_layout_was_loaded(self):
        self._check_repeats_after(self.load_keymap, "-layout", "de")

    def test_played_keys_do_not_repeat_after_a_new_modifier_map(self):
        self._check_repeats_after(self.change, "xmodmap", "-e", "add mod3 = Scroll_Lock")

    def test_played_keys_do_not_repeat_after_setxkbmap(self):
        self._check_repeats_after(self.change, "setxkbmap", "-layout", "de", "-option", "compose:rctrl")

    def test_changes_while_keys_are_held_end_no_note_and_repeat_none(self):
        self.play_behind_the_terminal()
        self.display.let_keys_repeat()
        self.typist.press("a", "d")
        self.assert_played(on="ad")
        for layout in ("de", "fr", "us"):
            self.load_keymap("-layout", layout)
            self.wait_for_repeats(set())
        time.sleep(HOLD_SECONDS)
        self.typist.release("d", "a")
        self.display.keep_keys_from_repeating()
        self.assert_played(off="da")
        self.assert_typed(b"")


class LockTest(ChangeTest):
    def setUp(self):
        super().setUp()
        # As for keyboards on which it switches a lamp.
        self.change("xmodmap", "-e", "add mod3 = Scroll_Lock")
        self.repeats_before = repeating_keys(self.sandbox)

    def test_locked_scroll_lock_changes_nothing(self):
        other = self.client(KeyHolder)
        # Mod3 is locked for the other program too.
        other.hold("q", modifiers=KeyHolder.SUPER | 1 << 5)
        self.play_behind_the_terminal()
        self.typist.tap("Scroll_Lock", "a", "Shift_L s", "1", "Control_L e", "Super_L q")
        self.assert_played("a", "s", "1")
        self.assertEqual(other.presses(), ["q"])
        for lock in ("Caps_Lock", "Num_Lock"):
            self.typist.tap(lock, "a", "Shift_L s")
            self.assert_played("a", "s")
        # The hotkey is one with it too.
        self.typist.tap("grave", "q", "grave", "d")
        self.assert_played("d")
        self.assert_typed(b"\x05Q")

    def test_lock_that_becomes_one_while_the_keys_are_captured(self):
        self.change("xmodmap", "-e", "remove mod3 = Scroll_Lock")
        self.repeats_before = repeating_keys(self.sandbox)
        self.play_behind_the_terminal()
        self.typist.tap("a")
        self.assert_played("a")
        self.change("xmodmap", "-e", "add mod3 = Scroll_Lock")
        self.typist.tap("Scroll_Lock")

        def plays():
            # What comes before the program has heard of the change is the terminal's.
            count = len(self.recorder.messages())
            self.typist.tap("s")
            self.forget_typed()
            return len(self.recorder.messages()) > count

        wait_for(plays, "a key that plays under the new lock")
        self.typist.tap("d")
        d = PLAYING_KEYS["d"].note
        wait_for(lambda: [message[1] for message in self.recorder.messages()[-2:]] == [d, d], "the last key")
        self.assert_typed(b"")

    def test_scroll_lock_in_the_own_window(self):
        self.play()
        self.typist.tap("Scroll_Lock", "a", "s")
        self.assert_played("a", "s")


if __name__ == "__main__":
    unittest.main()
