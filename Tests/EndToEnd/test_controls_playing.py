"""Holding, the bass note, the keys on the screen, and the buttons of the header, each used in the real window."""

import json
import unittest

from harness.controls import C_MAJOR, ControlsTest
from harness.stage import NOTE_OFF

ALL_CHANNELS_SILENT = [[0xB0 | channel, controller, 0] for channel in range(16) for controller in (123, 120)]


class HoldingTest(ControlsTest):
    def test_hold(self):
        self.start()
        self.surface.click("hold")
        self.display.tap("a")
        self.assert_next(("on", 60))
        self.display.tap("d")
        self.assert_next(("on", 62))
        self.display.tap("a")
        self.assert_next(("off", 60))
        self.surface.click("hold")
        self.assert_next(("off", 62))
        self.assert_plays("a", 60)

    def test_smart_hold(self):
        self.start()
        self.surface.click("smart hold")
        self.display.tap("a")
        self.assert_next(("on", 60))
        self.display.tap("d")
        self.assertCountEqual(self.next_messages(2), [[NOTE_OFF, 60, 0], [0x90, 62, 100]])
        # The two exclude each other.
        self.surface.click("hold")
        self.assert_next(("off", 62))
        self.display.tap("a", "a")
        self.assert_next(("on", 60), ("off", 60))

    def test_bassnote(self):
        self.start({"scaleName": "Major", "chordMode": "Triad"})
        self.surface.click("bassnote")
        self.assert_plays("a", *C_MAJOR, 48)
        self.surface.click("two octaves below")
        self.assert_plays("a", *C_MAJOR, 36)
        self.surface.click("one octave below")
        self.assert_plays("a", *C_MAJOR, 48)
        self.surface.click("bassnote")
        self.assert_plays("a", *C_MAJOR)


class KeysOnTheScreenTest(ControlsTest):
    def test_mouse_plays_every_row(self):
        self.start()
        for key, note in (("1", 84), ("q", 72), ("a", 60), ("z", 48), ("=", 95), ("/", 57)):
            self.surface.click(f"key {key}")
            self.assert_next(("on", note), ("off", note))

    def test_note_lasts_as_long_as_the_button_is_held(self):
        self.start()
        self.surface.point_at("key d")
        self.surface.hold_button()
        self.assert_next(("on", 62))
        # Keys of the keyboard meanwhile.
        self.assert_plays("a", 60)
        self.surface.release_button()
        self.assert_next(("off", 62))

    def test_sliding_plays_key_by_key(self):
        self.start()
        self.surface.point_at("key a")
        self.surface.hold_button()
        self.assert_next(("on", 60))
        # Each is waited for: of movements that come faster than a busy program works, the toolkit shows the last.
        self.surface.point_at("key s")
        self.assert_next(("off", 60), ("on", 61))
        self.surface.point_at("key d")
        self.assert_next(("off", 61), ("on", 62))
        self.surface.release_button()
        self.assert_next(("off", 62))

    def test_a_click_on_a_key_ends_the_editing_of_a_number(self):
        self.start()
        self.surface.click("velocity")
        self.display.type("50")
        self.surface.click("key a")
        self.assert_next(("on", 60), ("off", 60))
        self.assertEqual(self.play_key("s"), [[0x90, 61, 50]])


class HeaderTest(ControlsTest):
    def test_preset_picker(self):
        file = self.sandbox.folder / "Triads.tvp"
        state = {"scaleName": "Major", "chordMode": "Triad"}
        preset = {"id": "42", "name": "Triads", "state": state, "isBuiltIn": False}
        file.write_text(json.dumps(preset), encoding="utf-8")
        self.start(files=[file])
        self.assert_plays("a", *C_MAJOR)
        self.surface.choose("presets", -1)
        self.assert_plays("a", 60)
        self.surface.choose("presets", 1)
        self.assert_plays("a", *C_MAJOR)

    def test_stop_button(self):
        self.start({"holdMode": True})
        self.display.tap("a", "d")
        self.assert_next(("on", 60), ("on", 62))
        self.surface.click("stop")
        messages = self.next_messages(2 + len(ALL_CHANNELS_SILENT))
        self.assertCountEqual(messages[:2], [[NOTE_OFF, 60, 0], [NOTE_OFF, 62, 0]])
        self.assertEqual(messages[2:], ALL_CHANNELS_SILENT)
        self.display.tap("a")
        self.assert_next(("on", 60))

    def test_help_button_shows_the_tour_which_has_the_keys(self):
        self.start()
        self.surface.click("help")
        self.display.tap("a", "s", "d", "Escape", "f")
        self.assert_next(("on", 63), ("off", 63))

    def test_menu_button_and_quit(self):
        self.start()
        self.display.press("a")
        self.assert_next(("on", 60))
        self.surface.click("menu")
        # From below: what minimizes, what closes the window, and, as no text is there to be edited, what quits.
        self.display.tap("Up", "Up", "Up", "Return")
        self.assertEqual(self.application.program.wait_for_end(), 0)
        messages = self.next_messages(1 + len(ALL_CHANNELS_SILENT))
        self.assertEqual(messages, [[NOTE_OFF, 60, 0], *ALL_CHANNELS_SILENT])


if __name__ == "__main__":
    unittest.main()
