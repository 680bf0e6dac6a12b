#!/usr/bin/env python3
"""Measures how long a key press takes to a JACK client: through the program, through a bare X client with the
same JACK adapter, and through jack-keyboard, in turns. See Benchmarks/README.md."""
import argparse
import json
import pathlib
import shutil
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "Common"))

# pylint: disable=wrong-import-position
from rounds import Contest, Contestant, add_contest_options
from stage import Stage, add_stage_options, built

PROGRAM, BARE, JACK_KEYBOARD = "tavro", "bare client", "jack-keyboard"


def window_of(stage, name, arguments, title, port):
    """A program that plays while its window is in front."""
    stage.sandbox.start(name.replace(" ", "-"), arguments)
    window = stage.display.wait_for_window(title)
    return Contestant(name, port, lambda: stage.display.activate(window))


def contestants(stage, arguments):
    found = [
        window_of(stage, PROGRAM, [built(arguments, "tavro"), "--midi", "jack"], "TAVRO", "TAVRO:TAVRO Out"),
        window_of(stage, BARE, [built(arguments, "bare_client"), "Bare"], "Bare", "Bare:Out"),
    ]
    if arguments.without_jack_keyboard:
        return found
    path = shutil.which("jack-keyboard")
    if path is None:
        raise SystemExit("jack-keyboard is not installed (Debian: jack-keyboard); or --without-jack-keyboard")
    return found + [window_of(stage, JACK_KEYBOARD, [path], "jack-keyboard.*", "jack-keyboard:midi_out")]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    add_stage_options(parser)
    add_contest_options(parser)
    parser.add_argument("--without-jack-keyboard", action="store_true")
    parser.add_argument("--raw", type=pathlib.Path, help="writes every sample there, as JSON")
    arguments = parser.parse_args()
    with Stage(arguments) as stage:
        those = contestants(stage, arguments)
        contest = Contest(stage, built(arguments, "key_injector"), arguments.gaps, those)
        print(f"{stage.describe()}; {arguments.rendering} rendering")
        contest.play(arguments.rounds, arguments.presses)
    contest.print_figures([those[1]])
    if arguments.raw:
        arguments.raw.write_text(json.dumps(contest.samples()), encoding="utf-8")


if __name__ == "__main__":
    main()
