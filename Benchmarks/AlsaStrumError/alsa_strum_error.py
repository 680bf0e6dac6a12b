#!/usr/bin/env python3
"""Measures how far the notes of strummed chords lie from where they were planned, by the queue of ALSA's sequencer
and by timers of the main thread in turns. See Benchmarks/README.md."""
import argparse
import json
import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "Benchmarks/Common"), str(ROOT / "Tests/Kernel")]

# pylint: disable=wrong-import-position
from figures import figures, load, percentile, print_table
from kernel import Kernel

WAYS = {True: "queue", False: "timers"}


def play(arguments):
    player = pathlib.Path(arguments.build).resolve() / "bin/alsa_strum_player"
    command = [str(player), str(arguments.chords), *map(str, arguments.steps)]
    if arguments.machine is None:
        return subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True).stdout
    result = Kernel(arguments.machine).run(" ".join(command), timeout=3600)
    if result.status != 0:
        raise SystemExit(f"the player failed:\n{result.output}")
    return result.output


def row(chords, step, is_exact):
    these = [chord for chord in chords if chord["step_ms"] == step and chord["exact"] is is_exact]
    errors = [error for chord in these for error in chord["errors_us"]]
    more = {"median, signed": f"{percentile(errors, 50) / 1000:+.3f}"}
    return f"{step} ms, {WAYS[is_exact]}", len(errors), figures([abs(error) for error in errors]), more


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", default=str(ROOT / "build/release"))
    parser.add_argument("--machine", help="play in a virtual machine with the kernel in this cache folder")
    parser.add_argument("--chords", type=int, default=30, help="of each step and way")
    parser.add_argument("--steps", type=int, nargs="+", default=[5, 20, 50], help="in milliseconds")
    arguments = parser.parse_args()
    print(f"{load()} at the start")
    chords = [json.loads(line) for line in play(arguments).splitlines()]
    missing = sum(chord["missing"] for chord in chords)
    if missing:
        raise SystemExit(f"{missing} notes did not arrive")
    print_table("error, ms", [row(chords, step, way) for step in arguments.steps for way in (True, False)])


if __name__ == "__main__":
    main()
