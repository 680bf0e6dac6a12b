#!/usr/bin/env python3
"""./run without a display plays the demo and leaves a MIDI file of it.

demo.py ROOT BUILD SCRATCH        runs it with the programs in BUILD, in the folder SCRATCH
demo.py --check OUTPUT demo.mid   looks at what a run has printed and left
"""

import os
import re
import shutil
import subprocess
import sys
from pathlib import Path

import mido


def main(root, build, scratch):
    shutil.rmtree(scratch, ignore_errors=True)
    os.makedirs(scratch)
    environment = {
        name: value for name, value in os.environ.items() if name not in ("DISPLAY", "WAYLAND_DISPLAY")
    }
    environment.update(TAVRO_BUILD_DIR=build, HOME=scratch)
    result = subprocess.run(
        [os.path.join(root, "run")], cwd=scratch, env=environment, stdin=subprocess.DEVNULL,
        stdout=subprocess.PIPE, text=True, check=True,
    )
    lines = result.stdout.splitlines()
    file = Path(scratch).resolve() / "demo.mid"
    assert lines and str(file) in lines[-1], f"the last line does not name {file}: {lines[-1:]}"
    check(lines, file)


def check(lines, file):
    counts = {"note_on": 0, "note_off": 0}
    sounding = set()
    for message in mido.MidiFile(file).tracks[0]:
        if message.type in counts:
            counts[message.type] += 1
            note = (message.channel, message.note)
            if message.type == "note_on":
                assert message.velocity > 0 and note not in sounding, f"unexpected {message}"
                sounding.add(note)
            else:
                assert note in sounding, f"nothing to end for {message}"
                sounding.remove(note)
    print(counts)
    assert counts["note_on"] >= 20 and not sounding, f"{counts}, still sounding: {sounding}"

    printed = sum(re.match(r" *\d+ ms  9\d \w\w \w\w ", line) is not None for line in lines)
    assert printed == counts["note_on"], f"{printed} note-ons printed, {counts['note_on']} in the file"


if __name__ == "__main__":
    if sys.argv[1] == "--check":
        check(Path(sys.argv[2]).read_text(encoding="utf-8").splitlines(), sys.argv[3])
    else:
        main(*sys.argv[1:])
