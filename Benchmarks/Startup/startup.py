#!/usr/bin/env python3
"""Measures how long it takes from the start of a program to the first key that plays: tavro, jack-keyboard and
vmpk in turns, with their files in memory and without. See Benchmarks/README.md."""
import argparse
import os
import pathlib
import shutil
import socket
import struct
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "Common"))

# pylint: disable=wrong-import-position
from figures import figures, load, print_aligned, print_table
from stage import Stage, add_stage_options, built, wait_for
from harness.x_client import Typist

# On the bottom row of a us keyboard: all three play it.
KEY = "z"
SECONDS_BETWEEN_KEYS = 0.004
MOST_SECONDS = 60
GROUP, PORT = "225.0.0.37", 21928
NETWORK_OUTPUT = f"""[Connections]
AdvancedEnabled=true
InEnabled=false
InputDriver=Network
OutputDriver=Network
OutPort={PORT}

[Network]
interface=lo
ipv6=false
"""


class JackNote:
    """The first note at a JACK port."""

    def __init__(self, stage, arguments, port):
        self._program = stage.sandbox.start("first_note", [built(arguments, "first_note"), port])
        self._program.ends_with_input = True
        self._program.wait_for_object(lambda line: "ready" in line, "the recorder")

    def time(self):
        """In seconds by the monotonic clock; nothing while there was none."""
        found = [line["first_note_ns"] for line in self._program.objects if "first_note_ns" in line]
        if not found and not self._program.is_running():
            raise AssertionError("the recorder ended")
        return found[0] / 1e9 if found else None

    def close(self):
        self._program.end()


class NetworkNote:
    """The first note that is sent to the network's own group for MIDI: vmpk knows no JACK."""

    def __init__(self, _stage, _arguments, _port):
        self._socket = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self._socket.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        self._socket.bind((GROUP, PORT))
        member = struct.pack("4s4s", socket.inet_aton(GROUP), socket.inet_aton("127.0.0.1"))
        self._socket.setsockopt(socket.IPPROTO_IP, socket.IP_ADD_MEMBERSHIP, member)
        self._socket.setblocking(False)

    def time(self):
        try:
            message = self._socket.recv(16)
        except BlockingIOError:
            return None
        return time.monotonic() if message[0] & 0xF0 == 0x90 else None

    def close(self):
        self._socket.close()


class Contestant:
    def __init__(self, name, command, note, port=""):
        self.name = name
        self.command = command
        self.files = set()
        self.samples = {"warm": [], "cold": []}
        self._note = note
        self._port = port

    def start_once(self, stage, arguments, typist):
        """Seconds from the start to the first note."""
        note = self._note(stage, arguments, self._port)
        begin = time.monotonic()
        program = stage.sandbox.start(self.name, self.command)
        while (end := note.time()) is None:
            if time.monotonic() - begin > MOST_SECONDS:
                raise AssertionError(f"{self.name} did not play")
            typist.tap(KEY)
            time.sleep(SECONDS_BETWEEN_KEYS)
        self.files |= mapped_files(program.pid)
        program.end()
        note.close()
        # Its window and its ports are gone before another one starts.
        wait_for(lambda: not program.is_running(), f"the end of {self.name}")
        return end - begin


def mapped_files(pid):
    with open(f"/proc/{pid}/maps", encoding="utf-8") as maps:
        paths = {line.split(maxsplit=5)[5].rstrip("\n") for line in maps if line.count("/") > 1}
    return {path for path in paths if os.path.isfile(path)}


def forget(files):
    """Asks the system to drop these files from its memory. What another program maps stays there."""
    for path in files:
        try:
            descriptor = os.open(path, os.O_RDONLY)
        except OSError:
            continue
        os.posix_fadvise(descriptor, 0, 0, os.POSIX_FADV_DONTNEED)
        os.close(descriptor)


def files_that_are_read():
    """What the programs read without mapping it: the scene's modules, fonts, icons and styles."""
    folders = ["/usr/share/fonts", "/var/cache/fontconfig", "/usr/share/X11", "/usr/share/vmpk", "/usr/share/icons/hicolor"]
    folders += map(str, pathlib.Path("/usr/lib").glob("*/qt[56]"))
    return {os.path.join(top, name) for folder in folders for top, _, names in os.walk(folder) for name in names}


def contestants(stage, arguments):
    settings = pathlib.Path(stage.sandbox.environment["XDG_CONFIG_HOME"]) / "vmpk.sourceforge.net" / "VMPK.conf"
    settings.parent.mkdir(parents=True)
    settings.write_text(NETWORK_OUTPUT, encoding="utf-8")
    found = [Contestant("tavro", [built(arguments, "tavro"), "--midi", "jack"], JackNote, "TAVRO:TAVRO Out")]
    for name, note, port in (("jack-keyboard", JackNote, "jack-keyboard:midi_out"), ("vmpk", NetworkNote, "")):
        path = shutil.which(name)
        if path is None:
            raise SystemExit(f"{name} is not installed (Debian: {name})")
        found.append(Contestant(name, [path], note, port))
    return found


def play(stage, arguments, those):
    typist = Typist(stage.sandbox)
    read = files_that_are_read()
    print(f"{load()} at the start")
    for one in those:
        one.start_once(stage, arguments, typist)
    for number in range(arguments.rounds):
        for kind in ("warm", "cold"):
            for step in range(len(those)):
                # Another one begins each time.
                one = those[(number + step) % len(those)]
                if kind == "cold":
                    forget(one.files | read)
                one.samples[kind].append(one.start_once(stage, arguments, typist) * 1e6)
                print(f"  {one.name}, {kind}: {one.samples[kind][-1] / 1000:.0f} ms", file=sys.stderr)
    typist.close()
    print(f"{load()} at the end\n")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    add_stage_options(parser)
    parser.add_argument("--rounds", type=int, default=10)
    arguments = parser.parse_args()
    with Stage(arguments) as stage:
        those = contestants(stage, arguments)
        play(stage, arguments, those)
    for kind in ("warm", "cold"):
        results = {one.name: figures(one.samples[kind]) for one in those}
        print_table(f"{kind} start to first note, ms", [(one.name, arguments.rounds, results[one.name], {}) for one in those])
        print()
        base = results["jack-keyboard"]
        lines = [["compared with jack-keyboard", *base]]
        lines += [[name, *(f"{values[key] / base[key]:.2f}" for key in base)] for name, values in results.items()]
        print_aligned(lines)
        print()


if __name__ == "__main__":
    main()
