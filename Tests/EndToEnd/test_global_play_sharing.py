"""Other programs have reserved keys for themselves while the keys play."""

import unittest

from harness.global_play import ON, READY, GlobalPlayTest
from harness.x_client import KeyHolder

TAKEN = " - taken by another program: "


class SharingTest(GlobalPlayTest):
    def setUp(self):
        super().setUp()
        self.other = self.client(KeyHolder)

    def test_key_of_another_program_stays_its_own_and_is_named(self):
        self.other.hold("d")
        self.play_behind_the_terminal()
        self.application.wait_for_global_play(ON + TAKEN + "d")
        self.typist.tap("a", "d", "Shift_L d", "s")
        self.assert_played("a", "s")
        self.assert_typed(b"")
        self.assertEqual(self.other.presses(), ["d", "d"])

        # Tried again with the next change.
        self.other.let_go("d")
        self.show_application()
        self.show_terminal()
        self.application.wait_for_global_play(ON)
        self.typist.tap("d", "f")
        self.assert_played("d", "f")
        self.assert_typed(b"")
        self.assertEqual(self.other.presses(), [])

    def test_several_keys_of_another_program_are_named(self):
        self.other.hold("s", "1", "m")
        self.play_behind_the_terminal()
        self.typist.tap("a", "s", "2", "1", "n", "m")
        self.assert_played("a", "2", "n")
        self.assert_typed(b"")
        self.assertEqual(self.other.presses(), ["s", "1", "m"])
        text = self.application.global_play_texts()[-1]
        self.assertTrue(text.startswith(ON + TAKEN), text)
        self.assertCountEqual(text.removeprefix(ON + TAKEN).split(", "), ["s", "1", "m"])

    def test_hotkey_of_another_program_is_named(self):
        self.other.hold("grave")
        self.play()
        self.application.surface.toggle_settings()
        self.application.surface.click("Global Play")
        self.application.wait_for_global_play(ON)
        self.show_terminal()
        self.application.wait_for_global_play(ON + TAKEN + "the hotkey")
        self.typist.tap("a", "grave", "s")
        self.assert_played("a", "s")
        self.assertEqual(self.other.presses(), ["grave"])
        # Its other place is nobody else's.
        self.typist.tap("less", "d")
        self.assert_typed(b"d")
        self.application.wait_for_global_play(READY + TAKEN + "the hotkey")

    def test_shortcuts_of_another_program_with_super_work(self):
        self.other.hold("d", "Return", modifiers=KeyHolder.SUPER)
        self.play_behind_the_terminal()
        self.typist.press("a")
        self.typist.tap("Super_L d", "d", "Super_L Return")
        self.typist.release("a")
        self.assert_notes([("on", 60), ("on", 62), ("off", 62), ("off", 60)])
        self.assertEqual(self.other.presses(), ["d", "Return"])
        self.assertEqual(self.application.global_play_texts()[-1], ON)
        self.assert_typed(b"")

    def test_keys_typed_into_a_locked_screen_are_the_locks(self):
        self.play_behind_the_terminal()
        self.typist.press("a", "d")
        self.assert_played(on="ad")
        self.typist.release("d")
        self.assert_played(off="d")
        self.other.hold_all()
        self.typist.tap("s", "1", "Shift_L f", "grave")
        self.typist.release("a")
        # What was held ends nevertheless.
        self.assert_played(off="a")
        self.other.let_all_go()
        self.assertEqual(self.other.presses(), ["s", "1", "Shift_L", "f", "grave"])
        self.assertEqual(self.application.global_play_texts()[-1], ON)
        self.typist.tap("s", "a")
        self.assert_played("s", "a")
        self.assert_typed(b"")


if __name__ == "__main__":
    unittest.main()
