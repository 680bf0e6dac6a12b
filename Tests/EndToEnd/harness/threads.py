"""Threads that hang, while the rest of their process lives."""

import ctypes
import os
import pathlib

_LIBC = ctypes.CDLL(None, use_errno=True)
_LIBC.ptrace.argtypes = [ctypes.c_long, ctypes.c_long, ctypes.c_void_p, ctypes.c_void_p]
_DETACH, _SEIZE, _INTERRUPT = 17, 0x4206, 0x4207
# Waits for threads as for processes.
_WALL = 0x40000000


def thread_named(process, name):
    """The id of the thread of a process that has this name."""
    for task in pathlib.Path(f"/proc/{process}/task").iterdir():
        if (task / "comm").read_text().strip() == name:
            return int(task.name)
    raise AssertionError(f"the process {process} has no thread named {name}")


def _ptrace(request, thread):
    if _LIBC.ptrace(request, thread, None, None) != 0:
        raise OSError(ctypes.get_errno(), os.strerror(ctypes.get_errno()))


class HungThread:
    """A thread that does nothing, not even for signals, until it is let go. By one thread of the test."""

    def __init__(self, thread):
        self._thread = thread
        _ptrace(_SEIZE, thread)
        _ptrace(_INTERRUPT, thread)
        os.waitpid(thread, _WALL)

    def let_go(self):
        _ptrace(_DETACH, self._thread)
