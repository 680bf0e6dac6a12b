#!/usr/bin/env python3
"""Measures what the program takes while nobody plays: memory, wake-ups and processor time, beside a bare window
of the same toolkit. See Benchmarks/README.md."""
import argparse
import collections
import os
import pathlib
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "Common"))

# pylint: disable=wrong-import-position
from figures import load, print_aligned
from stage import Stage, add_stage_options, built

SETTLING_SECONDS = 5


def memory(pid):
    """Kilobytes: what is only this program's, and its fair share of everything."""
    with open(f"/proc/{pid}/smaps_rollup", encoding="ascii") as lines:
        values = {line.split(":")[0]: int(line.split()[1]) for line in lines if line.rstrip().endswith("kB")}
    return values["Private_Clean"] + values["Private_Dirty"], values["Pss"]


def threads(pid):
    """By thread: its name, how often it has been woken up, and for how many clock ticks it has run."""
    found = {}
    for thread in os.listdir(f"/proc/{pid}/task"):
        folder = pathlib.Path(f"/proc/{pid}/task/{thread}")
        status = dict(line.split(":\t", 1) for line in folder.joinpath("status").read_text().splitlines() if ":\t" in line)
        fields = folder.joinpath("stat").read_text().rpartition(")")[2].split()
        ticks = int(fields[11]) + int(fields[12])
        found[thread] = (status["Name"].strip(), int(status["voluntary_ctxt_switches"]), ticks)
    return found


def watch(pid, seconds):
    before = threads(pid)
    time.sleep(seconds)
    woken, ticks = collections.Counter(), 0
    for thread, (name, switches, run) in threads(pid).items():
        _, switches_before, run_before = before.get(thread, (name, 0, 0))
        woken[name] += switches - switches_before
        ticks += run - run_before
    return woken, ticks * 1000 / os.sysconf("SC_CLK_TCK")


def contestants(arguments):
    tavro = built(arguments, "tavro")
    return [
        ("bare window", "Bare", [built(arguments, "bare_window")]),
        # Without a server for it, so that nothing but the window is there.
        ("tavro, no MIDI", "TAVRO", [tavro, "--midi", "alsa"]),
        ("tavro, JACK", "TAVRO", [tavro, "--midi", "jack"]),
    ]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    add_stage_options(parser)
    parser.add_argument("--seconds", type=int, default=30)
    arguments = parser.parse_args()
    lines = [["", "private MB", "share MB", "wake-ups", "CPU ms", "by thread"]]
    with Stage(arguments) as stage:
        print(f"{arguments.seconds} s each; {stage.describe()}; {arguments.rendering} rendering; {load()}")
        for name, title, command in contestants(arguments):
            program = stage.sandbox.start(name.replace(" ", "-"), command)
            stage.display.activate(stage.display.wait_for_window(title))
            time.sleep(SETTLING_SECONDS)
            private, share = memory(program.pid)
            woken, busy = watch(program.pid, arguments.seconds)
            by_thread = ", ".join(f"{thread} {count}" for thread, count in woken.most_common() if count)
            lines.append(
                [name, f"{private / 1024:.1f}", f"{share / 1024:.1f}", str(sum(woken.values())), f"{busy:.0f}", by_thread]
            )
            program.end()
    print_aligned(lines)


if __name__ == "__main__":
    main()
