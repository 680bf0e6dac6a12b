import pathlib
import sys

# What is put before a command, for it to be started as shells start their jobs. A program that no shell could let
# go on does not heed the terminal's stop.
IN_ITS_OWN_GROUP = [
    sys.executable, "-c", "import os, sys; os.setpgid(0, 0); os.execv(sys.argv[1], sys.argv[1:])"
]


def processes(name, sandbox):
    """The ids of the running processes of a program that were started in the sandbox, by whomever."""
    home = f"HOME={sandbox.environment['HOME']}".encode()
    found = []
    for folder in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            program = (folder / "cmdline").read_bytes().split(b"\0")[0].decode()
            if pathlib.Path(program).name == name and home in (folder / "environ").read_bytes().split(b"\0"):
                found.append(int(folder.name))
        except OSError:
            # It has ended meanwhile, or belongs to somebody else.
            continue
    return found


def state_of(process):
    """The kernel's letter for what a process does: S sleeps, T is stopped."""
    return _state(pathlib.Path(f"/proc/{process}"))


def states_of_threads(process):
    """The same, of each of its threads."""
    return [_state(thread) for thread in pathlib.Path(f"/proc/{process}/task").iterdir()]


def _state(folder):
    return (folder / "stat").read_text().rpartition(")")[2].split()[0]
