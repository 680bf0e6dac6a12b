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
from figures import figures, load, print_aligned, print_table
from stage import Stage, add_stage_options, built, wait_for

# The key between Shift and the letters' row on a us keyboard: a key that all of them play.
KEY_CODE = 52
PROGRAM, BARE, JACK_KEYBOARD = "tavro", "bare client", "jack-keyboard"
WARM_UP_PRESSES = 10
MOST_REPETITIONS = 5


class Contestant:
    """One of the programs, its window and where its notes come out."""

    def __init__(self, stage, name, arguments, title, port):
        self.name = name
        self.port = port
        self.program = stage.sandbox.start(name.replace(" ", "-"), arguments)
        self.window = stage.display.wait_for_window(title)
        self.arrivals = []
        self.places = []


class Injector:
    def __init__(self, stage, program, gaps, ports):
        self.program = stage.sandbox.start("key_injector", [program, KEY_CODE, *gaps, *ports])
        self._most_seconds = gaps[1] * 2 / 1000 + 0.5
        self.program.ends_with_input = True
        self.ready = self.program.wait_for_object(lambda line: "ready" in line, "the connections")
        self._answers = 0

    def round(self, source, presses):
        self.program.write(f"{source} {presses}")
        self._answers += 1
        lines = wait_for(self._lines, "a round", 10 + presses * self._most_seconds)
        return json.loads(lines[-1])

    def _lines(self):
        lines = [line for line in self.program.lines if line.startswith('{"source"')]
        if len(lines) < self._answers and not self.program.is_running():
            raise AssertionError("the injector ended")
        return lines if len(lines) >= self._answers else None


def contestants(stage, arguments):
    found = [
        Contestant(stage, PROGRAM, [built(arguments, "tavro"), "--midi", "jack"], "TAVRO", "TAVRO:TAVRO Out"),
        Contestant(stage, BARE, [built(arguments, "bare_client"), "Bare"], "Bare", "Bare:Out"),
    ]
    if arguments.without_jack_keyboard:
        return found
    path = shutil.which("jack-keyboard")
    if path is None:
        raise SystemExit("jack-keyboard is not installed (Debian: jack-keyboard); or --without-jack-keyboard")
    return found + [Contestant(stage, JACK_KEYBOARD, [path], "jack-keyboard.*", "jack-keyboard:midi_out")]


def play_round(stage, injector, those, index, presses):
    """Plays a round that counts: one in which the server had an xrun is played again. Returns how often."""
    for repetition in range(MOST_REPETITIONS):
        stage.display.activate(those[index].window)
        answer = injector.round(index, presses)
        if answer["missing"] or answer["lost"]:
            raise AssertionError(f"{those[index].name}: {answer['missing']} presses without a note")
        if answer["xruns"] == 0:
            those[index].arrivals += answer["arrival_us"]
            those[index].places += answer["placed_us"]
            values = figures(answer["arrival_us"])
            texts = (f"{name} {value / 1000:.2f}" for name, value in values.items())
            print(f"  {those[index].name}: {', '.join(texts)}; {load()}", file=sys.stderr)
            return repetition
    raise AssertionError(f"{those[index].name}: {MOST_REPETITIONS} rounds in turn had xruns")


def print_ratios(those):
    base = figures(those[1].arrivals)
    lines = [["arrival, compared with the bare client", *base]]
    for one in those:
        values = figures(one.arrivals)
        lines.append([one.name, *(f"{values[name] / base[name]:.3f}" for name in base)])
    print_aligned(lines)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    add_stage_options(parser)
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--presses", type=int, default=100, help="of each round")
    parser.add_argument(
        "--gaps", type=int, nargs=2, default=[20, 60], metavar=("LEAST", "MOST"), help="ms that the key is down, and up"
    )
    parser.add_argument("--without-jack-keyboard", action="store_true")
    parser.add_argument("--raw", type=pathlib.Path, help="writes every sample there, as JSON")
    arguments = parser.parse_args()
    with Stage(arguments.period, arguments.rendering) as stage:
        those = contestants(stage, arguments)
        ports = [one.port for one in those]
        injector = Injector(stage, built(arguments, "key_injector"), arguments.gaps, ports)
        for index, one in enumerate(those):
            stage.display.activate(one.window)
            injector.round(index, WARM_UP_PRESSES)
        print(f"{stage.describe(arguments.period)}; {arguments.rendering} rendering; {load()} at the start")
        repeated = 0
        for number in range(arguments.rounds):
            for step in range(len(those)):
                # Another one begins each time.
                index = (number + step) % len(those)
                repeated += play_round(stage, injector, those, index, arguments.presses)
        print(f"{arguments.rounds} rounds each, {repeated} repeated for xruns; {load()} at the end\n")
    print_table("press to arrival, ms", [(one.name, len(one.arrivals), figures(one.arrivals), {}) for one in those])
    print()
    print_table("press to place, ms", [(one.name, len(one.places), figures(one.places), {}) for one in those])
    print()
    print_ratios(those)
    if arguments.raw:
        samples = {one.name: {"arrival_us": one.arrivals, "placed_us": one.places} for one in those}
        arguments.raw.write_text(json.dumps(samples), encoding="utf-8")


if __name__ == "__main__":
    main()
