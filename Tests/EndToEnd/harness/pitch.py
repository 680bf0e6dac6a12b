"""Tells the notes in a recording: where something sounds, and how high."""

import math
from operator import mul

# Below the lowest E of a bass. Lower frequencies, in Hz, are not looked for; there is no upper limit but the
# rate: a period must take five samples and more, or twice its length looks more like it.
LOWEST = 40.0

# How much of a sound must repeat itself, from 0 to 1, before it is said to have a pitch.
CLARITY = 0.8

# Levels are the highest sample, from 0 to 1, of pieces so long. Lower ones count as silence.
PIECE_SECONDS = 0.02
SILENCE = 0.001

# Shorter silences are part of the sound: the level of a note may beat.
PAUSE_SECONDS = 0.1


def levels(samples, rate):
    """The level of each whole piece of the samples, which are numbers from -1 to 1."""
    size = round(rate * PIECE_SECONDS)
    pieces = (samples[start : start + size] for start in range(0, len(samples) - size + 1, size))
    return [max(max(piece), -min(piece)) for piece in pieces]


def sounding_parts(samples, rate):
    """The samples of each part that is not silent, in order. None is left out, however short."""
    size = round(rate * PIECE_SECONDS)
    pause = PAUSE_SECONDS / PIECE_SECONDS
    spans = []
    for index, level in enumerate(levels(samples, rate)):
        if level <= SILENCE:
            continue
        if spans and index - spans[-1][1] < pause:
            spans[-1][1] = index + 1
        else:
            spans.append([index, index + 1])
    return [samples[first * size : end * size] for first, end in spans]


def frequency(samples, rate):
    """In Hz; None when the samples have no pitch of LOWEST or more, or are too few to tell.

    A sound of a certain pitch resembles itself a period later. This compares the samples with themselves at
    every lag (the normalised square difference), so it finds the period also where an overtone is stronger
    than the fundamental, which the highest peak of a spectrum does not.
    """
    longest = round(rate / LOWEST)
    if len(samples) < 2 * longest:
        return None
    mean = sum(samples) / len(samples)
    centred = [sample - mean for sample in samples]
    likeness = _likeness(centred, longest + 1)
    # At lag 0 everything is like itself; the first period lies behind the first contrast.
    first = next((lag for lag in range(longest) if likeness[lag] < 0), longest)
    peaks = [
        lag
        for lag in range(first, longest)
        if likeness[lag - 1] < likeness[lag] >= likeness[lag + 1]
    ]
    best = max((likeness[lag] for lag in peaks), default=0)
    if best < CLARITY:
        return None
    # Every multiple of the period is a peak too, and may be a little higher.
    period = next(lag for lag in peaks if likeness[lag] >= 0.9 * best)
    before, here, after = likeness[period - 1 : period + 2]
    return rate / (period + (before - after) / (2 * (before - 2 * here + after)))


def _likeness(samples, lags):
    """For each lag below `lags`: 1 where the samples equal those a lag later, -1 where they are opposite."""
    energy = [0.0]
    for sample in samples:
        energy.append(energy[-1] + sample * sample)
    count = len(samples)
    found = []
    for lag in range(lags):
        product = sum(map(mul, samples, samples[lag:]))
        whole = energy[count - lag] + energy[count] - energy[lag]
        found.append(2 * product / whole if whole else 0.0)
    return found


def note(samples, rate):
    """The pitch as a MIDI note number with its fraction, a semitone being 1; None when there is none."""
    hertz = frequency(samples, rate)
    return None if hertz is None else 69 + 12 * math.log2(hertz / 440)
