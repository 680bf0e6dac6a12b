#!/usr/bin/env python3
"""Measures how long a key press takes to a JACK client while another program is in front, beside a press in the
program's own window and beside a bare tap, in turns. See Benchmarks/README.md."""
import argparse
import os
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "Common"))

# pylint: disable=wrong-import-position
from rounds import Contest, Contestant, add_contest_options
from stage import Stage, add_stage_options, built, wait_for
from harness.application import Application
from harness.display import KeyWatch
from harness.global_play import ON, READY
from harness.keyboard_tap import repeating_keys
from harness.x_client import Typist

PROGRAM_PORT, BARE_PORT = "TAVRO:TAVRO Out", "BareTap:Out"


class Roads:
    """The program, a bare tap that is on only when nothing else takes the keys, and a window elsewhere."""

    def __init__(self, stage, arguments):
        self._sandbox = stage.sandbox
        self._display = stage.display
        self._repeats = repeating_keys(self._sandbox)
        command = [built(arguments, "bare_tap"), "BareTap", built(arguments, "tavro-guard")]
        self._bare = self._sandbox.start("bare_tap", command)
        self._bare.ends_with_input = True
        # Where the harness looks for it.
        os.environ["TAVRO_PROGRAM"] = str(built(arguments, "tavro"))
        self._program = Application(self._sandbox, self._display)
        self.elsewhere = KeyWatch(self._sandbox, self._display)
        self._elsewhere = self._display.wait_for_window("Elsewhere")
        self._typist = Typist(self._sandbox)
        self._is_on = False

    def close(self):
        self._typist.close()

    def in_the_window(self):
        self._set(False, False)

    def swallowed_by_the_program(self):
        self._set(True, False)
        self._go_elsewhere()

    def swallowed_by_the_bare_tap(self):
        self._set(False, True)
        self._go_elsewhere()

    def _set(self, is_on, is_bare_on):
        self._bare.write("off")
        self._display.activate(self._program.window)
        wait_for(lambda: repeating_keys(self._sandbox) == self._repeats, "all keys given back")
        if is_on != self._is_on:
            self._typist.tap("grave")
            self._program.wait_for_global_play(ON if is_on else READY)
            self._is_on = is_on
        if is_bare_on:
            self._bare.write("on")

    def _go_elsewhere(self):
        self._display.activate(self._elsewhere)
        # The keys that are taken do not repeat.
        wait_for(lambda: repeating_keys(self._sandbox) != self._repeats, "the keys to be taken")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    add_stage_options(parser)
    add_contest_options(parser)
    arguments = parser.parse_args()
    with Stage(arguments) as stage:
        roads = Roads(stage, arguments)
        those = [
            Contestant("swallowed", PROGRAM_PORT, roads.swallowed_by_the_program),
            Contestant("in the window", PROGRAM_PORT, roads.in_the_window),
            Contestant("bare tap", BARE_PORT, roads.swallowed_by_the_bare_tap),
        ]
        contest = Contest(stage, built(arguments, "key_injector"), arguments.gaps, those)
        print(f"{stage.describe()}; {arguments.rendering} rendering")
        contest.play(arguments.rounds, arguments.presses)
        roads.close()
        if roads.elsewhere.presses():
            raise AssertionError(f"{roads.elsewhere.presses()} presses were not swallowed")
    contest.print_figures(those[1:])


if __name__ == "__main__":
    main()
