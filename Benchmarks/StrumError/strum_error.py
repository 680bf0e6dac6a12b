#!/usr/bin/env python3
"""Measures how far the notes of strummed chords lie from where they were planned, with exact scheduling,
with timers of the main thread and by a bare JACK client in turns, under a window that repaints all the time.
See Benchmarks/README.md."""
import argparse
import json
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "Common"))

# pylint: disable=wrong-import-position
from figures import figures, load, percentile, print_table
from stage import Stage, add_stage_options, built

WAYS = ("exact", "timers", "bare")


def seconds_at_most(arguments):
    # The longest chord has ten notes; then pauses, and what a busy machine adds.
    return 60 + len(WAYS) * arguments.chords * sum(step * 10 + 400 for step in arguments.steps) / 1000


def play(stage, arguments):
    """All chords, and the summary."""
    player = stage.sandbox.start(
        "strum_player", [built(arguments, "strum_player"), arguments.chords, *arguments.steps]
    )
    stage.display.activate(stage.display.wait_for_window("TAVRO"))
    player.process.wait(seconds_at_most(arguments))
    if player.wait_for_end() != 0:
        raise AssertionError("the player failed")
    return [line for line in player.objects if "errors_us" in line], player.objects[-1]


def is_sound(chord):
    return chord["xruns"] == 0 and chord["lost"] == 0


def row(chords, step, way):
    these = [chord for chord in chords if chord["step_ms"] == step and chord["way"] == way]
    errors = [error for chord in these for error in chord["errors_us"]]
    delays = [chord["delay_us"] for chord in these]
    more = {
        "median, signed": f"{percentile(errors, 50) / 1000:+.3f}",
        "delay, median": f"{percentile(delays, 50) / 1000:.3f}",
        "delay, max": f"{max(delays) / 1000:.3f}",
        "late, p95": f"{percentile([chord['late_us'] for chord in these], 95) / 1000:.3f}",
        "late, max": f"{max(chord['late_us'] for chord in these) / 1000:.3f}",
    }
    return f"{step} ms, {way}", len(errors), figures([abs(error) for error in errors]), more


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    add_stage_options(parser)
    parser.add_argument("--chords", type=int, default=60, help="of each step and way")
    parser.add_argument("--steps", type=int, nargs="+", default=[5, 20, 50], help="in milliseconds")
    parser.add_argument("--raw", type=pathlib.Path, help="writes every chord there, as JSON")
    arguments = parser.parse_args()
    with Stage(arguments) as stage:
        print(f"{stage.describe()}; {arguments.rendering} rendering; {load()} at the start")
        chords, summary = play(stage, arguments)
    missing = sum(chord["missing"] for chord in chords if is_sound(chord))
    if missing or summary["dropped"]:
        raise SystemExit(f"{missing} notes did not arrive, {summary['dropped']} were dropped")
    if summary["refusals"]:
        raise SystemExit(f"{summary['refusals']} notes could not be scheduled exactly")
    sound = [chord for chord in chords if is_sound(chord)]
    print(
        f"{summary['frames'] / summary['seconds']:.0f} frames a second; {len(sound)} chords, "
        f"{len(chords) - len(sound)} more left out for xruns; {load()} at the end\n"
    )
    if arguments.raw:
        arguments.raw.write_text(json.dumps(chords), encoding="utf-8")
    kinds = [(step, way) for step in arguments.steps for way in WAYS]
    if any(not any((chord["step_ms"], chord["way"]) == kind for chord in sound) for kind in kinds):
        raise SystemExit("every chord of some kind met an xrun: the machine is too busy for figures")
    print_table("error, ms", [row(sound, step, way) for step, way in kinds])


if __name__ == "__main__":
    main()
