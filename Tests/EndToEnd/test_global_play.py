"""Another program is in front, and the keys that are typed there play; what it receives is compared."""

import unittest

from harness.display import KeyWatch
from harness.global_play import MANY_REPEATS, ON, READY, GlobalPlayTest
from harness.keys import HOTKEYS, PLAYING_KEYS
from harness.waiting import wait_for

# Longer than the server waits before it repeats a key, and more than a few repeats.
HOLD_SECONDS = 1.5


class PlayingTest(GlobalPlayTest):
    def test_all_keys_play_by_the_american_layout(self):
        self._play_all("QWERTY")

    def test_all_keys_play_by_the_german_layout(self):
        self._play_all("QWERTZ")

    def _play_all(self, layout):
        self.play_behind_the_terminal({"keyboardLayout": layout})
        self.assertEqual(len(PLAYING_KEYS), 45)
        self.typist.tap(*PLAYING_KEYS)
        self.assert_played(*PLAYING_KEYS)
        self.assert_typed(b"")

    def test_nothing_plays_before_global_play_is_on(self):
        self.play()
        self.display.activate(self.terminal.window)
        self.typist.tap("a", "Tab", "grave", "s")
        self.assert_typed(b"a\t`s")
        self.display.activate(self.application.window)
        self.typist.tap("d")
        self.assert_played("d")

    def test_switch_in_the_window_turns_it_on_and_off(self):
        self.play()
        self.application.surface.toggle_settings()
        self.application.surface.click("Global Play")
        self.application.wait_for_global_play(ON)
        self.show_terminal()
        self.typist.tap("a")
        self.assert_played("a")
        self.assert_typed(b"")
        self.show_application()
        self.application.surface.click("Global Play")
        self.application.wait_for_global_play(READY)
        self.display.activate(self.terminal.window)
        self.typist.tap("s")
        self.assert_typed(b"s")
        self.assert_played()

    def test_shifted_keys_play(self):
        self.play_behind_the_terminal()
        self.typist.tap(*(f"Shift_L {key}" for key in PLAYING_KEYS))
        self.assert_played(*PLAYING_KEYS)
        # Shift that changes while the key is held.
        self.typist.press("Shift_R", "a")
        self.typist.release("Shift_R", "a")
        self.typist.press("s", "Shift_L")
        self.typist.release("s", "Shift_L")
        self.assert_played("a", "s")
        self.assert_typed(b"")

    def test_caps_lock_and_num_lock_change_nothing(self):
        self.play_behind_the_terminal()
        for lock, typed in (("Caps_Lock", b"Q"), ("Num_Lock", b"Q"), ("Caps_Lock", b"q"), ("Num_Lock", b"q")):
            self.typist.tap(lock, "a", "Shift_L s", "1")
            self.assert_played("a", "s", "1")
            # The locks do lock, and the hotkey is one with them too.
            self.typist.tap("grave", "q", "grave", "Control_L d")
            self.application.wait_for_global_play(ON)
            self.assert_typed(typed + b"\x04")

    def test_keys_held_together_all_sound_and_all_end(self):
        self.play_behind_the_terminal()
        self.typist.press("a", "d", "g", "j")
        self.assert_played(on="adgj")
        self.typist.release("g", "a", "j", "d")
        self.assert_played(off="gajd")
        self.assert_typed(b"")

    def test_held_key_plays_once(self):
        self.play()
        self.display.let_keys_repeat()
        self.display.activate(self.terminal.window)
        self.typist.press("a")
        wait_for(lambda: self.terminal.received().count(b"a") > 5, "repeats, or the rest would show nothing")
        self.typist.release("a")
        self.forget_typed()

        self.display.activate(self.application.window)
        self.typist.tap("grave")
        self.application.wait_for_global_play(ON)
        self.show_terminal()
        self.press_space()
        for keys in (["a"], ["Shift_L", "s"]):
            self.hold_over_spaces(*keys)
            self.typist.release(*reversed(keys))
        self.assert_played("a", "s")
        self.assert_typed_besides_spaces(b"")


class PassingTest(GlobalPlayTest):
    KEYS = {
        "Return": b"\r",
        "Tab": b"\t",
        "space": b" ",
        "backslash": b"\\",
        "Up": b"\x1b[A",
        "Down": b"\x1b[B",
        "Right": b"\x1b[C",
        "Left": b"\x1b[D",
        "F1": b"\x1bOP",
        "Escape": b"\x1b",
        "Control_L c": b"\x03",
        "Control_L e": b"\x05",
        "Alt_L f": b"\x1bf",
        "Shift_L Alt_L f": b"\x1bF",
        # The terminal makes nothing special of it.
        "Super_L e": b"e",
        "Super_L Return": b"\r",
        # The hotkey has no modifiers.
        "Shift_L grave": b"~",
        "Alt_L grave": b"\x1b`",
    }

    def test_other_keys_and_shortcuts_reach_the_terminal(self):
        self.play_behind_the_terminal()
        for held in ("", "ad", "jk;1"):
            with self.subTest(held=held):
                self.typist.press(*held)
                self.assert_played(on=held)
                self.typist.tap(*self.KEYS)
                self.assert_typed(b"".join(self.KEYS.values()))
                self.typist.release(*held)
                self.assert_played(off=held)
        self.assertEqual(self.application.global_play_texts()[-1], ON)

    def test_foreign_keys_held_while_others_play(self):
        self.play_behind_the_terminal()
        self.typist.press("Tab")
        self.typist.tap("a", "s")
        self.typist.release("Tab")
        self.assert_played("a", "s")
        self.assert_typed(b"\t")
        # A key that went down as part of a shortcut plays nothing when it is held on.
        self.press_space()
        self.typist.press("Control_L", "c")
        self.typist.release("Control_L")
        self.hold_over_spaces()
        self.typist.tap("d")
        self.typist.release("c")
        self.assert_played("d")
        self.assert_typed_besides_spaces(b"\x03")

    def test_playing_key_held_into_a_shortcut(self):
        self.play_behind_the_terminal()
        self.press_space()
        self.hold_over_spaces("a", "Control_L")
        self.typist.tap("c")
        self.typist.release("a", "Control_L")
        self.assert_played("a")
        self.assert_typed_besides_spaces(b"\x03")


class HotkeyTest(GlobalPlayTest):
    def test_hotkey_toggles_from_outside_and_is_not_typed(self):
        self.play_behind_the_terminal()
        typed = b""
        for key in HOTKEYS:
            self.typist.tap(key, "a", "s")
            typed += b"as"
            self.application.wait_for_global_play(READY)
            self.typist.tap(key, "a", "s")
            self.application.wait_for_global_play(ON)
            self.assert_played("a", "s")
        self.assert_typed(typed)

    def test_held_hotkey_toggles_once(self):
        self.play_behind_the_terminal()
        self.typist.tap("grave")
        self.application.wait_for_global_play(READY)
        texts = len(self.application.global_play_texts())
        self.display.let_keys_repeat()
        self.typist.press("grave")
        # Keys that play do not repeat, so the hotkey goes on repeating.
        self.play_for(HOLD_SECONDS, "a")
        self.typist.release("grave")
        self.typist.tap("s")
        self.assert_played("s")
        self.assert_typed(b"")
        self.assertEqual(self.application.global_play_texts()[texts:], [ON])

    def test_hotkey_with_modifiers(self):
        self.play_behind_the_terminal()
        self.show_application()
        self.application.surface.toggle_settings()
        self.application.surface.click("record")
        self.typist.tap("Control_L Alt_L g")
        self.show_terminal()
        # The one of before is one no more.
        self.typist.tap("grave", "g", "Control_L g", "Alt_L g")
        self.assert_played("g")
        self.assert_typed(b"`\x07\x1bg")
        self.typist.tap("Control_L Alt_L g", "g")
        self.application.wait_for_global_play(READY)
        self.assert_typed(b"g")
        self.typist.tap("Control_L Alt_L g", "g", "h")
        self.application.wait_for_global_play(ON)
        self.assert_played("g", "h")
        self.assert_typed(b"")

    def test_turning_off_silences_what_sounds(self):
        self.play_behind_the_terminal()
        self.typist.press("a", "d", "g")
        self.assert_played(on="adg")
        self.typist.tap("grave", "q", "w")
        self.assert_silenced("adg")
        self.application.wait_for_global_play(READY)
        self.typist.release("a", "d", "g")
        self.typist.tap("a")
        self.assert_typed(b"qwa")
        self.typist.tap("grave", "a")
        self.assert_played("a")
        self.assert_typed(b"")

    def assert_silenced(self, keys):
        """Waits for the ends of these notes, which come in any order, and compares all so far."""
        notes = [PLAYING_KEYS[key].note for key in keys]
        messages = self.recorder.wait_for_messages(len(self.expected) + len(notes))
        ends = [message[1] for message in messages[len(self.expected) :]]
        self.assertCountEqual(ends, notes)
        self.expected += [("off", note) for note in ends]
        self.assert_played()

    def test_keys_held_when_it_is_turned_on(self):
        self.play_behind_the_terminal()
        self.typist.tap("grave")
        self.typist.press("a", "s")
        self.typist.tap("grave", "d")
        self.typist.release("a", "s")
        self.assert_played("d")
        self.typist.tap("a", "s")
        self.assert_played("a", "s")
        self.assert_typed(b"as")


class WindowTest(GlobalPlayTest):
    def test_own_window_plays_nothing_twice(self):
        self.play_behind_the_terminal()
        self.show_application()
        self.typist.tap("a", "Shift_L s", "d")
        self.assert_played("a", "s", "d")
        # The hotkey too is one.
        self.typist.tap("grave")
        self.application.wait_for_global_play(READY)
        self.typist.tap("grave", "f")
        self.application.wait_for_global_play(ON)
        self.assert_played("f")
        self.show_terminal()
        self.typist.tap("g")
        self.assert_played("g")
        self.assert_typed(b"")

    def test_keys_held_from_the_terminal_into_the_own_window_end(self):
        self.play_behind_the_terminal()
        self.typist.press("a", "s")
        self.assert_played(on="as")
        self.show_application()
        self.typist.release("a")
        self.assert_played(off="a")
        self.typist.tap("d")
        self.assert_played("d")
        self.typist.release("s")
        self.assert_played(off="s")
        self.typist.tap("a", "s")
        self.assert_played("a", "s")
        self.show_terminal()
        self.assert_typed(b"")

    def test_keys_held_from_the_own_window_into_the_terminal_end(self):
        self.play_behind_the_terminal()
        self.show_application()
        self.typist.press("a", "s")
        self.assert_played(on="as")
        self.show_terminal()
        self.typist.release("s", "a")
        self.assert_played(off="sa")
        self.typist.tap("a", "s")
        self.assert_played("a", "s")
        self.assert_typed(b"")

    def test_key_that_repeats_in_the_own_window_goes_silent_in_the_terminal(self):
        self.play_behind_the_terminal()
        self.show_application()
        watch = KeyWatch(self.sandbox, self.display, self.application.window)
        before = watch.presses()
        self.display.let_keys_repeat()
        self.typist.press("s", "a")
        wait_for(lambda: watch.presses() > before + MANY_REPEATS, "repeats in the own window")
        self.assert_played(on="sa")
        self.show_terminal()
        # The toolkit tells of the change a tenth of a second late; until then keys are typed.
        wait_for(self._is_silent_for_a_while, "the end of the repeats in the terminal")
        self.typist.release("a", "s")
        self.assert_played(off="as")
        self.forget_typed()
        self.typist.tap("a")
        self.assert_played("a")
        self.assert_typed(b"")

    def _is_silent_for_a_while(self):
        typed = self.terminal.received()
        # A key that plays does not repeat itself and leaves the repeats of another one alone.
        self.play_for(HOLD_SECONDS, "d")
        return self.terminal.received() == typed

    def test_keys_held_across_many_changes_of_window(self):
        self.play_behind_the_terminal()
        held = []
        # Each key is held over three changes.
        for number, key in enumerate("qawsedrftgzhujik"):
            (self.show_terminal if number % 2 else self.show_application)()
            self.typist.press(key)
            self.assert_played(on=key)
            held.append(key)
            if len(held) == 4:
                self.typist.release(held[0])
                self.assert_played(off=held.pop(0))
        # Each after the one before: keys of the window and keys of other programs come by roads of their own, and of
        # two that are let go together either may be the first.
        for key in held:
            self.typist.release(key)
            self.assert_played(off=key)
        self.show_terminal()
        self.assert_typed(b"")


if __name__ == "__main__":
    unittest.main()
