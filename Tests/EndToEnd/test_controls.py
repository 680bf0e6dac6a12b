"""The controls of the top row and of the Advanced panel, each used in the real window."""

import unittest

from harness.controls import C_MAJOR, ControlsTest
from harness.jack_server import RATE

TRIADS = {"scaleName": "Major", "chordMode": "Triad"}
ELEVENTH_TONES = 6
STRUM_MS = 40
HALF_OF_THE_STRUM = STRUM_MS // 2 * RATE // 1000


class TopRowTest(ControlsTest):
    def test_root(self):
        self.start()
        self.surface.choose("root", 2)
        self.assert_plays("a", 62)
        self.surface.choose("root", -1)
        self.assert_plays("a", 61)

    def test_scale(self):
        self.start()
        self.surface.choose("scale", 1)
        self.assert_plays("s", 62)

    def test_octave(self):
        self.start()
        self.surface.type_into("octave", "2")
        self.assert_plays("a", 84)
        self.surface.turn_wheel("octave", -1)
        self.assert_plays("a", 72)
        self.surface.drag_slider("octave", 1, -2)
        self.assert_plays("a", 36)
        self.surface.double_click_slider("octave", 3, "alt")
        self.assert_plays("a", 60)
        self.surface.type_into("octave", "99")
        self.assert_plays("a", 96)

    def test_chord(self):
        self.start({"scaleName": "Major"})
        self.surface.click("chord")
        self.assert_plays("a", *C_MAJOR)
        self.surface.click("chord")
        self.assert_plays("a", 60)

    def test_velocity(self):
        self.start()
        self.surface.type_into("velocity", "64")
        self._assert_velocity(64)
        self.surface.turn_wheel("velocity", 3)
        self._assert_velocity(67)
        # The arrows go to the slider under the pointer.
        self.surface.point_at_slider("velocity")
        self.display.tap("Up", "Right", "Down", "Down", "Left")
        self._assert_velocity(66)
        self.surface.drag_slider("velocity", 66, 127)
        self._assert_velocity(127)
        self.surface.double_click_slider("velocity", 30, "alt")
        self._assert_velocity(100)
        self.surface.type_into("velocity", "loud")
        self._assert_velocity(100)
        self.surface.click("velocity")
        self.display.type("12")
        self.display.tap("Escape")
        self._assert_velocity(100)

    def _assert_velocity(self, velocity):
        self.assertEqual(self.play_key("a"), [[0x90, 60, velocity]])

    def test_humanize(self):
        self.start()
        self.surface.type_into("humanize", "20")
        # No chance to speak of that so many stay near the middle.
        velocities = {self.play_key("a")[0][2] for _ in range(40)}
        self.assertLessEqual(velocities, set(range(80, 121)))
        self.assertTrue(velocities - set(range(93, 108)), velocities)
        self.surface.drag_slider("humanize", 20, 0)
        self.assertEqual({self.play_key("a")[0][2] for _ in range(10)}, {100})


class AdvancedTest(ControlsTest):
    def start(self, state=None, files=()):
        super().start(state, files)
        self.surface.toggle_advanced()

    def test_complexity(self):
        self.start(TRIADS)
        self.assert_plays("a", *C_MAJOR)
        self.surface.drag_slider("complexity", 0, 100)
        self.assert_plays("a", 60, 71, 74, 76, 77)
        self.surface.type_into("complexity", "30")
        self.assert_plays("a", 64, 67, 72)
        self.surface.double_click_slider("complexity", 60, "alt")
        self.assert_plays("a", *C_MAJOR)

    def test_note_limit(self):
        self.start({"scaleName": "Major", "chordMode": "Eleventh", "maxChordNotes": 2})
        self.play_key("a", 2)
        self.surface.turn_wheel("note limit", 1)
        self.play_key("a", 3)
        self.surface.drag_slider("note limit", 3, 5)
        self.play_key("a", 5)
        # Off.
        self.surface.type_into("note limit", "0")
        self.play_key("a", ELEVENTH_TONES)

    def test_strum(self):
        self.start(TRIADS)
        self.surface.type_into("strum", str(STRUM_MS))
        self._assert_strummed(C_MAJOR)
        self.surface.drag_slider("strum", STRUM_MS, -STRUM_MS)
        self._assert_strummed(C_MAJOR[::-1])
        self.surface.double_click_slider("strum", 25, "alt")
        self._assert_struck()

    def _play_chord(self):
        self.display.press("a")
        events = self.recorder.wait_for_events(self._seen + len(C_MAJOR))[self._seen :]
        self.next_messages(len(C_MAJOR))
        self.display.release("a")
        self.next_messages(len(C_MAJOR))
        frames = [event["frame"] for event in events]
        steps = [later - earlier for earlier, later in zip(frames, frames[1:])]
        return [event["bytes"][1] for event in events], steps

    def _assert_strummed(self, notes):
        self._assert_played_once(notes, lambda step: step > HALF_OF_THE_STRUM)

    def _assert_struck(self):
        # Each is stamped when it is sent, so the frame can change between one and the next.
        self._assert_played_once(C_MAJOR, lambda step: 0 <= step < HALF_OF_THE_STRUM)

    def _assert_played_once(self, notes, is_right):
        """Of several times, for a busy machine may hold up one note; what the steps are not set to never comes."""
        seen = []
        for _ in range(20):
            played, steps = self._play_chord()
            self.assertEqual(played, notes)
            if all(is_right(step) for step in steps):
                return
            seen.append(steps)
        self.fail(f"the frames between the notes are {seen}")

    def test_split_mode_and_melody_octave(self):
        self.start(TRIADS)
        self.play_key("q", len(C_MAJOR))
        self.surface.click("split mode")
        self.assert_plays("q", 72)
        self.assert_plays("a", *C_MAJOR)
        self.surface.type_into("melody octave", "1")
        self.assert_plays("q", 84)
        self.surface.drag_slider("melody octave", 1, -2)
        self.assert_plays("q", 48)
        self.assert_plays("a", *C_MAJOR)


if __name__ == "__main__":
    unittest.main()
