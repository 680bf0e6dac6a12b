import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
PROJECT = HERE.parent.parent
DEBIAN = ("apt-get", "apt-cache", "apt-mark", "dpkg", "dpkg-query", "sudo")
# Of the real machine the scripts see these and nothing else.
REAL_TOOLS = ("awk", "bash", "cat", "chmod", "dirname", "env", "grep", "mktemp", "rm", "sed", "sort")
REAL_TOOLS += ("true", "uname")


class Machine:
    """A machine with recorded package managers and a list of packages of its own, in a temporary folder.

    What it holds stands in `state`; `run` writes it out and reads it again.
    """

    def __init__(self, package_list, managers=DEBIAN, **state):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="tavro-packages-"))
        self.state = {
            "calls": [],
            "installed": {},
            # What apt knows now, and what it knows once it has refreshed its lists: name to architecture.
            "lists": {},
            "archive": {},
            "virtual": [],
            "architecture": "amd64",
            "dependencies": 0,
            "load": "22.9 MB",
            "disk": "85.0 MB",
            "versions": 1,
            "network": True,
            "broken": False,
            # What is installed and would have to give way to anything that is installed.
            "conflicting": [],
            # What nobody asked for: it came along with something else.
            "automatic": [],
            "user": 0,
            "sudo": False,
        } | state
        self._programs = self.folder / "bin"
        self._programs.mkdir()
        self.temporary = self.folder / "tmp"
        self.temporary.mkdir()
        for name in REAL_TOOLS:
            (self._programs / name).symlink_to(shutil.which(name))
        for name in ("id", *managers):
            # Isolated, and without what a site adds: it starts many times.
            self.add_program(name, f'#!/bin/sh\nexec "{sys.executable}" -IS "{HERE}/package_managers.py" {name} "$@"\n')
        (self.folder / "Packaging").mkdir()
        shutil.copy(PROJECT / "Packaging" / "packages.sh", self.folder / "Packaging")
        (self.folder / "Packaging" / "packages.txt").write_text(package_list, encoding="utf-8")

    def close(self):
        shutil.rmtree(self.folder)

    def add_program(self, name, text):
        """Puts a script among the programs of the machine."""
        path = self._programs / name
        path.write_text(text, encoding="utf-8")
        path.chmod(0o755)

    def ensure(self, *purposes, **environment):
        """Sources packages.sh as ./run does, and asks for the packages of the purposes."""
        script = 'set -euo pipefail; source Packaging/packages.sh; ensurePackages "$@"; echo "==> Afterwards"'
        return self.run(["bash", "-c", script, "bash", *purposes], **environment)

    def run(self, command, **environment):
        state = self.folder / "machine.json"
        state.write_text(json.dumps(self.state), encoding="utf-8")
        result = subprocess.run(
            [str(self._programs / command[0]), *command[1:]],
            cwd=self.folder,
            env={
                "PATH": str(self._programs),
                "RECORDED_MACHINE": str(state),
                "HOME": str(self.folder),
                "TMPDIR": str(self.temporary),
            }
            | environment,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            text=True,
            timeout=600,
            check=False,
        )
        self.state = json.loads(state.read_text(encoding="utf-8"))
        return result

    def calls(self, program, *words):
        """The calls of a program that hold all the words."""
        return [
            call[1:] for call in self.state["calls"] if call[0] == program and all(word in call for word in words)
        ]

    def installations(self):
        """What was really installed with apt-get, call by call."""
        return [
            [word for word in call if word in self.state["archive"]] for call in self.calls("apt-get", "install", "-y")
        ]
