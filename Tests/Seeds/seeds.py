"""The seeds of tests that choose at random."""

import os
import random

VARIABLE = "TAVRO_RANDOM_SEED"
FRESH = "fresh"


def seed(fixed):
    """The fixed one, so that a failure is one of the change that is tested. The environment variable may name
    another, or ask for a fresh one; that is printed and can be given again."""
    wanted = os.environ.get(VARIABLE, "")
    if not wanted:
        return fixed
    if wanted != FRESH and not (wanted.isascii() and wanted.isdigit() and int(wanted) < 2**32):
        raise AssertionError(f"{VARIABLE} is a number below 2^32 or {FRESH!r}, not {wanted!r}")
    chosen = random.SystemRandom().randrange(2**32) if wanted == FRESH else int(wanted)
    print(f"{VARIABLE}={chosen}", flush=True)
    return chosen
