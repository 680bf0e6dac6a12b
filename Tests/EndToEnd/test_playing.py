"""Keys of the typing keyboard go down and up in the program's window; the notes arrive elsewhere."""

import itertools
import unittest

from harness.display import KeyWatch
from harness.stage import StageTest
from harness.waiting import wait_for

# The first keys of the home row and their notes, on the chromatic scale from middle C.
NOTES = {"a": 60, "s": 61, "d": 62, "f": 63}


class PlayingTest(StageTest):
    def test_single_keys(self):
        self.play()
        expected = []
        for key, note in NOTES.items():
            self.display.press(key)
            expected.append(("on", note))
            self.assert_notes(expected)
            self.display.release(key)
            expected.append(("off", note))
            self.assert_notes(expected)

    def test_exact_bytes_without_humanizing(self):
        self.play({"humanizeVelocity": 0})
        self.display.tap("a")
        self.assertEqual(self.recorder.wait_for_messages(2), [[0x90, 60, 100], [0x80, 60, 0]])

    def test_four_keys_together(self):
        self.play()
        self.display.press(*NOTES)
        sounding = [("on", note) for note in NOTES.values()]
        self.assert_notes(sounding)
        self.display.release(*NOTES)
        self.assert_notes(sounding + [("off", note) for note in NOTES.values()])

    def test_shift_plays_the_same_note(self):
        self.play()
        self.display.press("Shift_L")
        self.display.press("a")
        self.display.release("a")
        self.display.release("Shift_L")
        # Shift let go while the note sounds, and pressed while it sounds.
        self.display.press("Shift_L")
        self.display.press("s")
        self.display.release("Shift_L")
        self.display.release("s")
        self.display.press("d")
        self.display.press("Shift_L")
        self.display.release("d")
        self.display.release("Shift_L")
        self.assert_notes([("on", 60), ("off", 60), ("on", 61), ("off", 61), ("on", 62), ("off", 62)])

    def test_caps_lock_plays_the_same_note(self):
        self.play()
        watch = KeyWatch(self.sandbox, self.display, self.application.window)
        self.display.tap("Caps_Lock")
        self.display.press("s")
        self.display.release("s")
        watch.program.wait_for_line(lambda line: "keysym 0x53, S" in line, "a capital letter")
        self.assert_notes([("on", 61), ("off", 61)])

    def test_held_key_under_autorepeat_plays_once(self):
        self.play()
        self._hold_under_autorepeat("s")
        self.display.tap("d")
        self.assert_notes([("on", 61), ("off", 61), ("on", 62), ("off", 62)])

    def test_autorepeat_does_not_end_a_note_of_hold(self):
        self.play({"holdMode": True})
        self._hold_under_autorepeat("s")
        self.display.tap("d", "s")
        self.assert_notes([("on", 61), ("on", 62), ("off", 61)])

    def _hold_under_autorepeat(self, key):
        watch = KeyWatch(self.sandbox, self.display, self.application.window)
        before = watch.presses()
        self.display.let_keys_repeat()
        self.display.press(key)
        # What goes to the window besides the first press are repeats; so many take well over a second.
        wait_for(lambda: watch.presses() >= before + 40, "the keyboard's repeats")
        self.display.release(key)

    def test_alt_shortcut_plays_nothing(self):
        self.play()
        self.display.press("Alt_L")
        self.display.press("a")
        self.display.release("a")
        self.display.release("Alt_L")
        self.display.tap("d")
        self.assert_notes([("on", 62), ("off", 62)])

    def test_control_held_at_the_release_does_not_leave_the_note(self):
        self.play()
        self.display.press("a")
        self.assert_notes([("on", 60)])
        self.display.press("Control_L")
        self.display.release("a")
        self.display.release("Control_L")
        self.assert_notes([("on", 60), ("off", 60)])
        self.display.tap("a")
        self.assert_notes([("on", 60), ("off", 60), ("on", 60), ("off", 60)])

    def test_strummed_chord_released_halfway(self):
        self.play({"chordMode": "Eleventh", "strumMilliseconds": 50, "scaleName": "Major"})
        self.display.press("a")
        chord = [message[1] for message in self.recorder.wait_for_messages(6)]
        self.display.release("a")
        self.assert_notes([("on", note) for note in chord] + [("off", note) for note in chord])

        # A release takes its time to arrive; one that comes after the last note shows nothing.
        for _ in range(50):
            sounded = self._release_after_two_notes(chord)
            if sounded < len(chord):
                break
        self.assertLess(sounded, len(chord), "no release came halfway")

    def _release_after_two_notes(self, chord):
        """How many notes of the chord sounded. Those and no others end, and none comes later."""
        before = len(self.recorder.messages())
        self.display.press("a")
        self.recorder.wait_for_messages(before + 2)
        self.display.release("a")
        # A whole chord takes longer than the rest of the first one would have taken.
        self.display.press("s")
        self._wait_for_runs(before, 3, len(chord))
        self.display.release("s")
        self._wait_for_runs(before, 4, len(chord))

        sounded = self._runs(before)[0]
        self.assertEqual(self._runs(before), [sounded, sounded, len(chord), len(chord)])
        notes = [message[1] for message in self.recorder.messages()[before:]]
        self.assertEqual(notes[: 2 * sounded], chord[:sounded] * 2)
        return sounded

    def _runs(self, before):
        """How many note-ons, then note-offs, then note-ons and so on came, after the first `before`."""
        states = [message[0] for message in self.recorder.messages()[before:]]
        return [len(list(run)) for _, run in itertools.groupby(states)]

    def _wait_for_runs(self, before, count, last):
        def is_complete():
            runs = self._runs(before)
            return len(runs) == count and runs[-1] == last

        wait_for(is_complete, lambda: f"{count} runs, the last of {last}; there are {self._runs(before)}")


if __name__ == "__main__":
    unittest.main()
