"""Other programs take the keyboard for a while, with grabs, while keys are held in the program's own window."""

import unittest

from harness.display import KeyWatch
from harness.global_play import ON, GlobalPlayTest
from harness.keys import PLAYING_KEYS
from harness.waiting import wait_for
from harness.window_switcher import begin_switching, bind_window_switcher
from harness.x_client import KeyHolder

# Stands for the keys that every desktop reserves: volume, brightness, media.
RESERVED = "F1"
# So many repeats take longer than toolkits wait before they believe that the keyboard is gone.
REPEATS = 6


class GrabTest(GlobalPlayTest):
    def setUp(self):
        super().setUp()
        self.other = self.client(KeyHolder)

    def play_with_global_play(self, state=None):
        """In its own window."""
        self.play(state)
        self.typist.tap("grave")
        self.application.wait_for_global_play(ON)

    def hold_reserved_key(self):
        """Until the other program has had it for a while; it is still down then."""
        self.typist.press(RESERVED)
        pressed = []
        wait_for(
            lambda: pressed.extend(self.other.presses()) or len(pressed) > REPEATS,
            lambda: f"repeats of the reserved key; there are {pressed}",
        )


class PassiveGrabTest(GrabTest):
    def setUp(self):
        super().setUp()
        self.other.hold(RESERVED)

    def test_key_that_is_let_go_under_a_short_grab_ends(self):
        self.play()
        self.typist.press("d")
        self.assert_played(on="d")
        self.typist.press(RESERVED)
        self.typist.release("d", RESERVED)
        self.assert_played(off="d")
        # It is no repeat when it comes again.
        self.typist.tap("d")
        self.assert_played("d")
        self.assertEqual(self.other.presses(), [RESERVED])

    def test_keys_that_are_let_go_under_a_long_grab_end_at_once(self):
        self.play()
        self.typist.press("d", "g")
        self.assert_played(on="dg")
        self.hold_reserved_key()
        self.typist.release("g")
        self.assert_played(off="g")
        self.typist.release(RESERVED)
        self.typist.tap("s")
        self.assert_played("s")
        self.typist.release("d")
        self.assert_played(off="d")

    def test_key_that_was_pressed_under_a_grab_stays_silent_until_it_is_pressed_again(self):
        self.play()
        watch = KeyWatch(self.sandbox, self.display, self.application.window)
        self.typist.press(RESERVED, "g")
        self.typist.release(RESERVED)
        before = watch.presses()
        # The key that was pressed last goes on repeating, and its repeats go to the window in front.
        wait_for(lambda: watch.presses() > before + REPEATS, "repeats in the window")
        self.typist.release("g")
        self.typist.tap("s", "g")
        self.assert_played("s", "g")

    def test_long_grab_does_not_end_what_hold_keeps(self):
        self.play({"holdMode": True})
        self.typist.tap("d")
        self.assert_played(on="d")
        self.hold_reserved_key()
        self.typist.release(RESERVED)
        self.typist.tap("s", "d", "s")
        self.assert_played(on="s", off="ds")

    def test_long_grab_does_not_end_what_smart_hold_keeps(self):
        self.play({"smartHoldMode": True})
        self.typist.tap("d")
        self.assert_played(on="d")
        self.hold_reserved_key()
        self.typist.release(RESERVED)
        self.typist.tap("s")
        # The next chord replaces it.
        self.expected += [("off", 62), ("on", 61)]
        self.assert_notes(self.expected)

    def test_release_under_a_grab_with_global_play_on(self):
        self.play_with_global_play()
        self.typist.press("d")
        self.assert_played(on="d")
        self.typist.press(RESERVED)
        self.typist.release("d", RESERVED)
        self.assert_played(off="d")
        self.show_terminal()
        self.typist.tap("d")
        self.assert_played("d")
        self.assert_typed(b"")


class LostReleaseTest(GrabTest):
    def test_key_let_go_while_the_window_switcher_has_the_keyboard(self):
        bind_window_switcher(self.sandbox)
        wait_for(self._is_switcher_bound, "the window manager to take Alt and Tab")
        self.play_with_global_play()
        self.typist.press("d")
        self.assert_played(on="d")
        begin_switching(self.sandbox, self.typist)
        self.typist.release("d", "Alt_L")
        self.assert_played(off="d")
        self.show_terminal()
        self.typist.tap("d")
        self.assert_played("d")
        self.assert_typed(b"")

    def _is_switcher_bound(self):
        # There is only the terminal to go to.
        is_bound = begin_switching(self.sandbox, self.typist, self.terminal.received)
        self.typist.release("Alt_L")
        self.terminal.forget()
        return is_bound

    def test_key_let_go_in_another_window_of_the_program(self):
        # Where nobody listens, so that there is something to tell.
        self.sandbox.environment["TAVROUpdateFeedURL"] = "https://localhost:1/latest.json"
        self.play_with_global_play()
        self.typist.press("d")
        self.assert_played(on="d")
        # The first item of the menu asks for updates.
        self.application.surface.click("menu")
        self.display.tap("Down", "Return")
        wait_for(lambda: len(self.display.windows("TAVRO")) == 2, "the alert")
        alert = next(w for w in self.display.windows("TAVRO") if w != self.application.window)
        self.display.wait_for_focus(alert)
        self.typist.release("d")
        self.assert_played(off="d")
        self.show_terminal()
        self.typist.tap("d")
        self.assert_played("d")
        self.assert_typed(b"")

    def test_key_let_go_elsewhere_before_the_modifier_that_is_held(self):
        for modifier in ("Control_L", "Alt_L", "Super_L", "Shift_L"):
            with self.subTest(modifier=modifier):
                self._let_go_elsewhere(modifier)

    def _let_go_elsewhere(self, modifier):
        if not hasattr(self, "application"):
            self.play_with_global_play()
        else:
            self.show_application()
        self.typist.press("d")
        self.assert_played(on="d")
        self.typist.press(modifier)
        self.show_terminal()
        self.typist.release("d", modifier)
        self.assert_played(off="d")
        self.typist.tap("d")
        self.assert_played("d")
        self.assert_typed(b"")

    def test_smart_hold_does_not_pile_up_behind_a_key_let_go_elsewhere(self):
        self.play_with_global_play({"smartHoldMode": True})
        self.typist.press("d", "Control_L")
        self.assert_played(on="d")
        self.show_terminal()
        self.typist.release("d", "Control_L")
        for key, last in ("sd", "fs", "gf"):
            self.typist.tap(key)
            self.expected += [("off", PLAYING_KEYS[last].note), ("on", PLAYING_KEYS[key].note)]
            self.assert_notes(self.expected)
        self.assert_typed(b"")

    def test_key_that_is_held_over_a_loss_of_the_keyboard_stays_silent(self):
        self.play()
        watch = KeyWatch(self.sandbox, self.display, self.application.window)
        self.typist.press("g")
        self.assert_played(on="g")
        self.display.activate(self.terminal.window)
        self.assert_played(off="g")
        self.display.activate(self.application.window)
        before = watch.presses()
        wait_for(lambda: watch.presses() > before + REPEATS, "repeats in the window")
        self.typist.release("g")
        self.typist.tap("s", "g")
        self.assert_played("s", "g")

    def test_key_that_is_let_go_elsewhere_plays_when_it_is_pressed_again(self):
        self.play()
        self.typist.press("g")
        self.assert_played(on="g")
        self.display.activate(self.terminal.window)
        self.assert_played(off="g")
        self.typist.release("g")
        self.display.activate(self.application.window)
        self.typist.press("g")
        self.assert_played(on="g")
        self.typist.release("g")
        self.assert_played(off="g")


class PasswordTest(GrabTest):
    PASSWORD = ("s", "d", "Shift_L f", "1", "grave", "s")
    TYPED = ["s", "d", "Shift_L", "f", "1", "grave", "s"]

    def _type_password(self):
        """Into a screen lock."""
        said = len(self.application.program.lines)
        self.other.hold_all()
        self.typist.tap(*self.PASSWORD)
        # The last key is still down when the lock opens.
        self.typist.press("Return")
        self.typist.press("h")
        self.other.let_all_go()
        self.typist.release("Return", "h")
        self.assertEqual(self.other.presses(), [*self.TYPED, "Return", "h"])
        self.typist.tap("a")
        self.assert_played("a")
        self.assertEqual(self.application.program.lines[said:], [
            line for line in self.application.program.lines[said:] if "Note" in line
        ])
        files = [file for file in self.sandbox.folder.rglob("*") if file.is_file() and "home" in file.parts]
        for file in files:
            self.assertNotIn(b"sdf1", file.read_bytes(), file)

    def test_password_while_the_window_has_the_keyboard(self):
        self.play()
        self.typist.press("d")
        self.assert_played(on="d")
        self.typist.release("d")
        self.assert_played(off="d")
        self._type_password()

    def test_password_with_global_play_in_the_own_window(self):
        self.play_with_global_play()
        self._type_password()

    def test_password_with_global_play_elsewhere(self):
        self.play_behind_the_terminal()
        self._type_password()


if __name__ == "__main__":
    unittest.main()
