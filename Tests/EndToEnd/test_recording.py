"""The hotkey is recorded in the settings: every key can be, and nothing goes on recording unseen."""

import unittest

from harness.global_play import ON, READY, GlobalPlayTest


class RecordingTest(GlobalPlayTest):
    def begin(self):
        self.application.surface.click("record")

    def play_with_settings(self):
        self.play()
        self.application.surface.toggle_settings()

    def assert_old_hotkey_toggles(self):
        before = self.application.global_play_texts()
        self.typist.tap("grave")
        self.application.wait_for_global_play(READY if before and before[-1] == ON else ON)

    def assert_ended(self):
        """A playing key plays, and has not become the hotkey."""
        self.display.tap("a", "a")
        self.assert_played("a", "a")
        self.assertEqual(self.application.global_play_texts(), [])
        self.assert_old_hotkey_toggles()

    def test_every_kind_of_key_becomes_the_hotkey(self):
        self.play_with_settings()
        wanted = ON
        for key in ("Return", "Escape", "Tab", "BackSpace", "F5", "space", "Up", "ctrl+Return"):
            with self.subTest(key=key):
                self.begin()
                # Once to record it, once to toggle.
                self.display.tap(key, key)
                self.application.wait_for_global_play(wanted)
                wanted = READY if wanted == ON else ON

    def test_named_hotkey_toggles_from_outside_and_is_not_typed(self):
        self.play_with_settings()
        self.begin()
        self.display.tap("Escape", "Escape")
        self.application.wait_for_global_play(ON)
        self.show_terminal()
        self.typist.tap("a", "Escape", "s", "Escape", "d", "grave")
        self.assert_played("a", "d")
        self.assert_typed(b"s`")
        self.assertEqual(self.application.global_play_texts()[-1], ON)

    def test_closing_the_panel_ends_it(self):
        self.play_with_settings()
        self.begin()
        self.application.surface.toggle_settings()
        self.assert_ended()

    def test_second_click_ends_it(self):
        self.play_with_settings()
        self.begin()
        self.begin()
        self.assert_ended()

    def test_menu_ends_it(self):
        self.play_with_settings()
        self.begin()
        self.application.surface.click("menu")
        self.typist.tap("Escape")
        self.assert_ended()

    def test_list_of_choices_ends_it(self):
        self.play_with_settings()
        self.begin()
        self.application.surface.click("scale")
        self.typist.tap("Escape")
        self.assert_ended()

    def test_dialog_ends_it(self):
        self.play_with_settings()
        self.begin()
        self.application.surface.click("load")
        self.typist.tap("Escape")
        self.assert_ended()

    def test_tour_ends_it(self):
        self.play_with_settings()
        self.begin()
        self.application.surface.click("help")
        self.typist.tap("Escape")
        self.assert_ended()

    def test_losing_the_keyboard_ends_it(self):
        self.play_with_settings()
        self.begin()
        self.display.activate(self.terminal.window)
        self.display.activate(self.application.window)
        self.assert_ended()


if __name__ == "__main__":
    unittest.main()
