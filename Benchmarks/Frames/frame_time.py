#!/usr/bin/env python3
"""Measures the frames of the window while ten keys a second light up, beside frames in which nothing changes.
See Benchmarks/README.md."""
import argparse
import json
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "Common"))

# pylint: disable=wrong-import-position
from figures import figures, load, print_aligned, print_table
from stage import Stage, add_stage_options, built, wait_for


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    add_stage_options(parser)
    parser.add_argument("--presses", type=int, default=200)
    arguments = parser.parse_args()
    with Stage(arguments) as stage:
        player = stage.sandbox.start("frame_player", [built(arguments, "frame_player"), arguments.presses])
        print(f"{arguments.rendering} rendering; {load()}")
        wait_for(lambda: len(player.objects) == 2, "the frames", 20 + arguments.presses)
        series = player.objects
    for title, name in (("frame, ms", "frame_us"), ("asked for to shown, ms", "shown_us")):
        results = [(one["name"], one["frames"], figures(one[name]), {}) for one in series]
        print_table(title, results)
        ratios = [f"{results[0][2][key] / results[1][2][key]:.3f}" for key in results[0][2]]
        print_aligned([["", *results[0][2]], ["keys / nothing", *ratios]])
        print()
    print(json.dumps({one["name"]: one["frames"] for one in series}))


if __name__ == "__main__":
    main()
