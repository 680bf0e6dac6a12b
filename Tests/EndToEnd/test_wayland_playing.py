"""Keys go down and up in a Wayland session, with the program's window in front or not; the notes arrive elsewhere."""

import unittest

from harness.keys import CODES, PLAYING_KEYS
from harness.waiting import wait_for
from harness.wayland_keyboard import GROUPS
from harness.wayland_stage import WaylandStageTest
from harness.wayland_window import WaylandWindow


# Each takes some periods of the server.
CLICKS = 10


def taps(*keys):
    return [(state, key) for key in keys for state in ("on", "off")]


class WaylandPlayingTest(WaylandStageTest):
    def open_other_window(self):
        """In front of the program's."""
        other = WaylandWindow(self.sandbox, self.session, "Elsewhere")
        self.addCleanup(other.close)

        def has_keyboard():
            other.synchronize()
            return other.has_keyboard

        wait_for(has_keyboard, "the keyboard in the other window")
        return other

    def test_positions_play_in_every_layout(self):
        self.play()
        for layout in GROUPS:
            with self.subTest(layout=layout):
                self.keyboard.choose_layout(layout)
                self.keyboard.tap(*PLAYING_KEYS)
                self.assert_played(*taps(*PLAYING_KEYS))
        # The layout was really another one.
        other = self.open_other_window()
        for number, layout in enumerate(GROUPS):
            self.keyboard.choose_layout(layout)
            other.synchronize()
            self.assertEqual(other.group, number)

    def test_layout_that_changes_while_a_key_is_held_does_not_leave_the_note(self):
        self.play()
        self.keyboard.press("z")
        self.assert_played(("on", "z"))
        self.keyboard.choose_layout("ru")
        self.keyboard.release("z")
        self.assert_played(("off", "z"))
        self.keyboard.tap("a")
        self.assert_played(*taps("a"))

    def test_held_key_plays_once_however_long_it_repeats(self):
        self.session.let_keys_repeat(delay=20, rate=100)
        self.play()
        self.wait_for_pointer()
        self.keyboard.press("s")
        # It is the toolkit that repeats, between all else that it does: a mouse plays meanwhile for much longer
        # than the first repeat takes.
        self.assert_played(("on", "s"))
        for _ in range(CLICKS):
            self.click("key d")
            self.assert_played(*taps("d"))
        self.keyboard.release("s")
        self.assert_played(("off", "s"))

    def test_repeats_do_not_end_a_note_of_hold(self):
        self.session.let_keys_repeat(delay=20, rate=100)
        self.play()
        self.wait_for_pointer()
        self.click("hold")
        self.keyboard.press("s")
        self.assert_played(("on", "s"))
        for number in range(CLICKS):
            self.click("key d")
            self.assert_played(("off" if number % 2 else "on", "d"))
        self.keyboard.release("s")
        self.keyboard.tap("s")
        self.assert_played(("off", "s"))

    def test_shift_plays_the_same_note(self):
        self.play()
        self.keyboard.press("Shift_L", "a")
        self.keyboard.release("a", "Shift_L")
        # Shift let go while the note sounds, and pressed while it sounds.
        self.keyboard.press("Shift_L", "s")
        self.keyboard.release("Shift_L", "s")
        self.keyboard.press("d", "Shift_L")
        self.keyboard.release("d", "Shift_L")
        self.assert_played(*taps("a", "s", "d"))

    def test_shortcut_plays_nothing(self):
        self.play()
        self.keyboard.press("Control_L", "a")
        self.keyboard.release("a", "Control_L")
        self.keyboard.tap("d")
        self.assert_played(*taps("d"))

    def test_control_held_at_the_release_does_not_leave_the_note(self):
        self.play()
        self.keyboard.press("a", "Control_L")
        self.keyboard.release("a", "Control_L")
        self.keyboard.tap("a")
        self.assert_played(*taps("a", "a"))

    def test_held_note_ends_when_another_window_comes_to_the_front(self):
        self.play()
        self.keyboard.press("a")
        self.assert_played(("on", "a"))
        other = self.open_other_window()
        self.assert_played(("off", "a"))

        # The release, and keys pressed there, belong to the other window.
        self.keyboard.release("a")
        self.keyboard.tap("s")
        other.synchronize()
        there = [(CODES["a"], False), (CODES["s"], True), (CODES["s"], False)]
        self.assertEqual(other.keys[-3:], there)
        self.session.give_keyboard(self.window)
        other.synchronize()
        self.assertFalse(other.has_keyboard)
        self.keyboard.tap("d")
        self.assert_played(*taps("d"))

    def test_note_of_a_keyboard_that_vanishes_ends(self):
        self.play()
        self.keyboard.press("a", "d")
        self.assert_played(("on", "a"), ("on", "d"))
        self.keyboard.vanish()
        messages = self.recorder.wait_for_messages(self._seen + 2)[self._seen :]
        self.assertCountEqual(messages, [[0x80, PLAYING_KEYS[key].note, 0] for key in "ad"])
        # Another one plays at once, the same keys too.
        self.forget_notes()
        self.keyboard = self.new_keyboard()
        self.wait_for_keyboard()
        self.keyboard.tap("a", "d")
        self.assert_played(*taps("a", "d"))


if __name__ == "__main__":
    unittest.main()
