"""The Settings panel in the real window, and the places of everything in windows of other sizes."""

import json
import pathlib
import unittest

from harness.application import Application
from harness.controls import ControlsTest
from harness.recorder import Recorder
from harness.sheets import FileDialog
from harness.silence import PANIC
from harness.waiting import wait_for
from harness.windows import WindowProperties

SYNTH_INPUT = "in"


class SettingsTest(ControlsTest):
    def start(self, state=None, files=()):
        super().start(state, files)
        self.surface.toggle_settings()

    def test_midi_channel(self):
        self.start()
        self.surface.choose("MIDI channel", 4)
        self.assertEqual(self.play_key("a"), [[0x94, 60, 100]])
        self.surface.choose("MIDI channel", 11)
        self.assertEqual(self.play_key("a"), [[0x9F, 60, 100]])

    def test_midi_output(self):
        synth = Recorder(self.sandbox, sources=(), inputs=(SYNTH_INPUT,), name="Synth")
        self.start()
        self.assert_plays("a", 60)
        # The recorder that listens to the program's own source has an input too.
        self.surface.choose("MIDI output", 2)
        self.display.tap("s")
        self.assertEqual(synth.wait_for_messages(2, SYNTH_INPUT), [[0x90, 61, 100], [0x80, 61, 0]])
        self.surface.choose("MIDI output", -2)
        self.assert_plays("d", 62)
        self.assertEqual(len(synth.messages(SYNTH_INPUT)), 2)

    def test_midi_system(self):
        self.start()
        self.assert_plays("a", 60)
        # From JACK, by the environment, to JACK with the period that it has.
        self.surface.choose("MIDI system", 1)
        self.assertEqual(self.next_messages(len(PANIC)), PANIC)
        self.recorder.wait_for_connection()
        self.assert_plays("s", 61)
        self.display.tap("alt+F4")
        self.assertEqual(self.application.program.wait_for_end(), 0)
        self.assertEqual(self.next_messages(len(PANIC)), PANIC)
        # What was chosen is kept, for a start that is told nothing else.
        file = pathlib.Path(self.sandbox.environment["XDG_CONFIG_HOME"]) / "tavro/tavro.json"
        settings = json.loads(file.read_text(encoding="utf-8"))
        self.assertEqual(
            (settings["TAVRO.MIDISystem.v1"], settings["TAVRO.MIDIShortPeriod.v1"]), ("jack", False)
        )
        del self.sandbox.environment["TAVRO_MIDI"]
        self.application = Application(self.sandbox, self.display)
        self.recorder.wait_for_connection()
        self.display.tap("d")
        self.assertEqual([message[1] for message in self.next_messages(2)], [62, 62])

    def test_keyboard_layout(self):
        self.start({"keyboardLayout": "QWERTY"})
        # The places of the keys are the same in all of them; what was chosen stands in a preset.
        self.assertEqual(self._saved_state("Before")["keyboardLayout"], "QWERTY")
        self.surface.toggle_settings()
        self.surface.choose("keyboard layout", -1)
        self.assert_plays("z", 48)
        self.assertEqual(self._saved_state("After")["keyboardLayout"], "QWERTZ")

    def _saved_state(self, name):
        # The dialog's places are known in the window as it opens.
        self.surface.toggle_settings()
        folder = pathlib.Path(self.sandbox.environment["HOME"]) / "Documents" / "TAVRO Presets"
        self.surface.click("save")
        FileDialog(self.application).save_as(name, has_files=any(folder.glob("*")))
        file = folder / f"{name}.tvp"
        wait_for(file.exists, "the file of the preset")
        return json.loads(file.read_text(encoding="utf-8"))["state"]


class WindowSizesTest(ControlsTest):
    def test_panels_make_room(self):
        self.start()
        window = WindowProperties(self.sandbox, self.application.window)
        for toggle, height in (
            (self.surface.toggle_advanced, 909),
            (self.surface.toggle_settings, 1021),
            (self.surface.toggle_advanced, 917),
            (self.surface.toggle_settings, 805),
        ):
            toggle()
            window.wait_for_size((1280, height))
            # The keys and a switch are where they are drawn.
            self._assert_everything_is_in_its_place()

    def test_a_window_of_another_shape_is_not_stretched(self):
        self.start()
        # Nobody keeps the shape now.
        self.display.end_window_manager()
        for size in ((1300, 560), (760, 1000), (1000, 629), (720, 520)):
            with self.subTest(size=size):
                self.display.resize(self.application.window, *size)
                self.surface.wait_until_drawn()
                self._assert_everything_is_in_its_place()

    def _assert_everything_is_in_its_place(self):
        for key, note in (("1", 84), ("=", 95), ("z", 48), ("/", 57)):
            self.surface.click(f"key {key}")
            self.assert_next(("on", note), ("off", note))
        self.surface.click("hold")
        self.surface.click("key a")
        self.assert_next(("on", 60))
        self.surface.click("hold")
        self.assert_next(("off", 60))


if __name__ == "__main__":
    unittest.main()
