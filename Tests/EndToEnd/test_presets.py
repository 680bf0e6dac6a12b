"""Presets in the real window: saved and loaded by its dialogs, opened from the command line, and still there
when the program starts again."""

import json
import pathlib
import unittest

from harness.sheets import Alert, FileDialog
from harness.stage import StageTest
from harness.waiting import wait_for

MAJOR_TRIADS = {"scaleName": "Major", "chordMode": "Triad", "velocity": 100, "humanizeVelocity": 0}
C_MAJOR = [("on", 60), ("on", 64), ("on", 67)]


class PresetsTest(StageTest):
    def test_a_saved_preset_is_a_file_and_is_there_after_a_restart(self):
        self.play(MAJOR_TRIADS)
        self.application.surface.click("save")
        FileDialog(self.application).save_as("Warm pads", has_files=False)
        file = self._preset_folder() / "Warm pads.tvp"
        wait_for(file.exists, "the file of the preset")
        saved = json.loads(file.read_text(encoding="utf-8"))
        self.assertEqual(saved["name"], "Warm pads")
        self.assertFalse(saved["isBuiltIn"])
        self.assertEqual({key: saved["state"][key] for key in MAJOR_TRIADS}, MAJOR_TRIADS)

        self.display.tap("alt+F4")
        self.assertEqual(self.application.program.wait_for_end(), 0)
        self.play()
        before = len(self.recorder.messages())
        self.display.press("a")
        self._assert_new_notes(before, C_MAJOR)

    def test_the_load_dialog_offers_the_presets_of_the_folder(self):
        folder = self._preset_folder()
        folder.mkdir(parents=True)
        self._write(folder / "Triads.tvp")
        (folder / "Another kind.txt").write_text("not for presets")
        self.play()
        self.application.surface.click("load")
        FileDialog(self.application).load_first()
        before = len(self.recorder.messages())
        self.display.press("a")
        self._assert_new_notes(before, C_MAJOR)

    def test_a_preset_is_opened_from_the_command_line(self):
        file = self.sandbox.folder / "Triads.tvp"
        self._write(file)
        self.play(files=[file])
        self.display.press("a")
        self.assert_notes(C_MAJOR)
        wait_for(lambda: "Triads" in self._settings(), "the preset among the settings")

    def test_a_broken_file_is_an_alert_and_changes_nothing(self):
        file = self.sandbox.folder / "Broken.tvp"
        file.write_text('{"id": ')
        self.play(files=[file])
        alert = Alert(self.application)
        alert.wait_until_shown()
        # It has the keys until it is read.
        self.display.tap("a")
        alert.read()
        self.display.tap("s")
        self.assert_notes([("on", 61), ("off", 61)])
        self.assertNotIn("CustomPresets", self._settings())

    def _preset_folder(self):
        return pathlib.Path(self.sandbox.environment["HOME"]) / "Documents" / "TAVRO Presets"

    def _settings(self):
        return self.sandbox.settings_file().read_text(encoding="utf-8")

    def _assert_new_notes(self, before, expected):
        messages = wait_for(
            lambda: len(self.recorder.messages()) >= before + len(expected) and self.recorder.messages()[before:],
            "the notes",
        )
        self.assertEqual([("on" if one[0] == 0x90 else "off", one[1]) for one in messages], expected)

    @staticmethod
    def _write(file):
        state = json.dumps(MAJOR_TRIADS)
        file.write_text(f'{{"id": "42", "name": "Triads", "state": {state}, "isBuiltIn": false}}', encoding="utf-8")


if __name__ == "__main__":
    unittest.main()
