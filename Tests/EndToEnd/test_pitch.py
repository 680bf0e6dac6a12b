"""What the pitch analysis tells of sounds whose pitch is known."""

import math
import random
import unittest

from harness import pitch

RATE = 24000


def hertz(note):
    return 440 * 2 ** ((note - 69) / 12)


def tone(note, seconds=0.2, overtones=(1.0,)):
    """A sound with the given strengths of the fundamental and of what lies above it."""
    step = 2 * math.pi * hertz(note) / RATE
    scale = 0.5 / sum(overtones)
    return [
        scale * sum(strength * math.sin(step * (n + 1) * t) for n, strength in enumerate(overtones))
        for t in range(round(RATE * seconds))
    ]


def silence(seconds):
    return [0.0] * round(RATE * seconds)


class NoteTest(unittest.TestCase):
    def test_sines(self):
        for note in range(36, 89, 2):
            with self.subTest(note=note):
                self.assertAlmostEqual(pitch.note(tone(note), RATE), note, delta=0.05)

    def test_far_above_the_keys(self):
        # A pitch that is wrong by octaves must not pass for the right one.
        for note in (93, 96, 101, 108):
            with self.subTest(note=note):
                self.assertAlmostEqual(pitch.note(tone(note), RATE), note, delta=0.1)

    def test_between_the_semitones(self):
        for note in (47.7, 60.25, 60.5, 71.6, 83.75):
            with self.subTest(note=note):
                self.assertAlmostEqual(pitch.note(tone(note), RATE), note, delta=0.05)

    def test_overtones_louder_than_the_fundamental(self):
        for note in (48, 60, 61, 72, 84):
            with self.subTest(note=note):
                heard = pitch.note(tone(note, overtones=(0.3, 1.0, 0.7, 0.5)), RATE)
                self.assertAlmostEqual(heard, note, delta=0.05)

    def test_a_fading_tone(self):
        fading = [sample * math.exp(-t / RATE / 0.1) for t, sample in enumerate(tone(60))]
        self.assertAlmostEqual(pitch.note(fading, RATE), 60, delta=0.05)

    def test_constant_offset(self):
        self.assertAlmostEqual(pitch.note([sample + 0.3 for sample in tone(60)], RATE), 60, delta=0.05)

    def test_silence_has_none(self):
        self.assertIsNone(pitch.note(silence(0.2), RATE))

    def test_noise_has_none(self):
        numbers = random.Random(1)
        self.assertIsNone(pitch.note([numbers.uniform(-0.5, 0.5) for _ in range(4800)], RATE))

    def test_too_short_to_tell(self):
        self.assertIsNone(pitch.note([], RATE))
        self.assertIsNone(pitch.note(tone(60, 0.02), RATE))


class SoundingPartsTest(unittest.TestCase):
    def lengths(self, samples):
        return [len(part) / RATE for part in pitch.sounding_parts(samples, RATE)]

    def test_nothing(self):
        self.assertEqual(self.lengths([]), [])
        self.assertEqual(self.lengths(silence(0.5)), [])
        self.assertEqual(self.lengths([pitch.SILENCE] * RATE), [])

    def test_notes_with_silence_between(self):
        played = (60, 61, 59, 72)
        samples = silence(0.3)
        for note in played:
            samples += tone(note) + silence(0.3)
        parts = pitch.sounding_parts(samples, RATE)
        self.assertEqual(len(parts), len(played))
        for part, note in zip(parts, played):
            self.assertAlmostEqual(pitch.note(part, RATE), note, delta=0.05)

    def test_begins_and_ends_with_sound(self):
        self.assertEqual(self.lengths(tone(60) + silence(0.2) + tone(60)), [0.2, 0.2])

    def test_a_short_one_counts(self):
        self.assertEqual(self.lengths(tone(60) + silence(0.2) + tone(72, 0.02) + silence(0.2)), [0.2, 0.02])

    def test_a_short_silence_does_not_divide(self):
        lengths = self.lengths(tone(60) + silence(0.06) + tone(60) + silence(0.2))
        self.assertEqual(len(lengths), 1)
        self.assertAlmostEqual(lengths[0], 0.46)


if __name__ == "__main__":
    unittest.main()
