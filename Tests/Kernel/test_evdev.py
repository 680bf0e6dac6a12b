"""The evdev adapter on a real kernel's input devices."""

import os
import subprocess
import sys
import unittest

from kernel import Kernel
from seeds import VARIABLE, seed


def proof():
    path = os.environ.get("TAVRO_EVDEV_PROOF")
    if not path:
        raise AssertionError("the environment variable TAVRO_EVDEV_PROOF is not set; ctest sets it")
    return path


def run_inside():
    """Runs all checks in one machine and returns the lines that they wrote."""
    cache = os.environ.get("TAVRO_KERNEL_CACHE")
    if not cache:
        raise AssertionError("the environment variable TAVRO_KERNEL_CACHE is not set; ctest sets it")
    # The program has fixed seeds of its own.
    chosen = seed(None)
    environment = "" if chosen is None else f"{VARIABLE}={chosen} "
    return Kernel(cache).run(f'{environment}"{proof()}"\necho end', timeout=580).output.splitlines()


class EvdevCheck(unittest.TestCase):
    """One check of the program inside; the program itself runs once for all of them."""

    lines = None

    def __init__(self, name):
        super().__init__("check")
        self._name = name

    def id(self):
        return self._name

    def __str__(self):
        return self.id()

    def setUp(self):
        if EvdevCheck.lines is None:
            # An attempt that failed is not made again for every check.
            EvdevCheck.lines = []
            EvdevCheck.lines = run_inside()

    def check(self):
        told = [line for line in self.lines if line.split(" ", 1)[-1].split(":")[0] == self._name]
        self.assertEqual(told, [f"ok {self._name}"], "\n".join(self.lines))


class ProgramEnds(EvdevCheck):
    """A program that broke off, or that a sanitizer or a library made write more, would show here."""

    def __init__(self, names):
        super().__init__("program_ends_and_writes_nothing_else")
        self._names = names

    def check(self):
        self.assertEqual(self.lines[-1:], ["end"])
        others = [line for line in self.lines[:-1] if line.split(" ", 1)[-1].split(":")[0] not in self._names]
        self.assertEqual(others, [])
        self.assertEqual(len(self.lines) - 1, len(self._names))


def load_tests(_loader, _tests, _pattern):
    names = subprocess.run([proof(), "--list"], capture_output=True, text=True, check=True).stdout.split()
    if not names:
        raise AssertionError(f"{proof()} --list names no check")
    suite = unittest.TestSuite()
    suite.addTests(EvdevCheck(name) for name in names)
    suite.addTest(ProgramEnds(names))
    return suite


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
