"""A real instrument plays what is typed: the pitch of what it renders is the pitch of the key."""

import unittest

from harness import pitch
from harness.recorder import SOURCE
from harness.stage import StageTest
from harness.synthesizer import RATE, Synthesizer

# The first keys of the home row, on the chromatic scale from middle C, and the first key of every other row,
# which are octaves apart.
KEYS = {"a": 60, "s": 61, "d": 62, "z": 48, "q": 72, "1": 84}

SOUND_SECONDS = 0.3
SILENCE_SECONDS = 0.3
# The hammer's noise at the begin of a note has no pitch.
ATTACK_SECONDS = 0.08
HEARD_SECONDS = 0.17
# In semitones; an instrument is not tuned better than that.
TOLERANCE = 0.2


class InstrumentTest(StageTest):
    def setUp(self):
        super().setUp()
        self.sandbox.environment["TAVRO_MIDI"] = "jack"
        self.synthesizer = Synthesizer(self.sandbox, self.server)

    def test_each_key_sounds_at_its_pitch(self):
        self.play()
        self.synthesizer.connect(SOURCE)
        self.synthesizer.wait_for_silence(SILENCE_SECONDS)
        sent = []
        for key, note in KEYS.items():
            self.display.press(key)
            self.synthesizer.wait_for_sound(SOUND_SECONDS)
            self.display.release(key)
            self.synthesizer.wait_for_silence(SILENCE_SECONDS)
            # A held note of this instrument becomes silent too, in the end.
            sent += [("on", note), ("off", note)]
            self.assert_notes(sent)

        heard = [self.pitch_of(part) for part in pitch.sounding_parts(self.synthesizer.stop(), RATE)]
        self.assertEqual(len(heard), len(KEYS), f"so many notes sound: {heard}")
        for (key, note), sound in zip(KEYS.items(), heard):
            with self.subTest(key=key):
                self.assertIsNotNone(sound, "a pitch")
                self.assertAlmostEqual(sound, note, delta=TOLERANCE)

    @staticmethod
    def pitch_of(part):
        start = round(ATTACK_SECONDS * RATE)
        return pitch.note(part[start : start + round(HEARD_SECONDS * RATE)], RATE)


if __name__ == "__main__":
    unittest.main()
