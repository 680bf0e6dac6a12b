"""The ALSA adapter on a real kernel's sequencer."""

import os
import subprocess
import sys
import unittest

from kernel import Kernel
from seeds import VARIABLE, seed

NO_SEQUENCER = -2
NO_PERMISSION = -13
FAILURE_CHECK = "creation_fails_with_a_status_and_stays_silent"

SCRIPT = """
echo "== sequencer"
{environment}"{proof}"
echo "== no permission"
"{proof}" --fails {no_permission} --as 65534
echo "== no sequencer"
mv /dev/snd/seq /dev/snd/away
"{proof}" --fails {no_sequencer}
echo "== end"
"""


def path_from(variable):
    path = os.environ.get(variable)
    if not path:
        raise AssertionError(f"the environment variable {variable} is not set; ctest sets it")
    return path


def run_inside(proof):
    """Runs everything in one machine. Returns the lines that each section of the script wrote."""
    # The program has fixed seeds of its own.
    chosen = seed(None)
    script = SCRIPT.format(
        environment="" if chosen is None else f"{VARIABLE}={chosen} ",
        proof=proof,
        no_permission=NO_PERMISSION,
        no_sequencer=NO_SEQUENCER,
    )
    result = Kernel(path_from("TAVRO_KERNEL_CACHE")).run(script, timeout=400)
    sections = {}
    lines = sections.setdefault("", [])
    for line in result.output.splitlines():
        if line.startswith("== "):
            lines = sections.setdefault(line[3:], [])
        else:
            lines.append(line)
    if "end" not in sections:
        raise AssertionError(f"the script inside did not come to its end:\n{result.output}")
    return sections


class AlsaCheck(unittest.TestCase):
    """One check of the program inside; the program itself runs once for all of them."""

    sections = None

    def __init__(self, section, name):
        super().__init__("check")
        self._section = section
        self._name = name

    def id(self):
        return f"{self._section.replace(' ', '_')}.{self._name}"

    def __str__(self):
        return self.id()

    def setUp(self):
        if AlsaCheck.sections is None:
            # An attempt that failed is not made again for every check.
            AlsaCheck.sections = {}
            AlsaCheck.sections = run_inside(path_from("TAVRO_ALSA_PROOF"))

    def check(self):
        lines = AlsaCheck.sections.get(self._section, [])
        told = [line for line in lines if line.split(" ", 1)[-1].split(":")[0] == self._name]
        self.assertEqual(told, [f"ok {self._name}"], "\n".join(lines))


class NothingElseIsWritten(AlsaCheck):
    """What a library prints about a missing sequencer would stand here."""

    def __init__(self, section, names):
        super().__init__(section, "nothing_else_is_written")
        self._names = names

    def check(self):
        lines = AlsaCheck.sections.get(self._section, [])
        others = [line for line in lines if line.split(" ", 1)[-1].split(":")[0] not in self._names]
        self.assertEqual(others, [])
        self.assertEqual(len(lines), len(self._names))


def load_tests(_loader, _tests, _pattern):
    proof = path_from("TAVRO_ALSA_PROOF")
    names = subprocess.run([proof, "--list"], capture_output=True, text=True, check=True).stdout.split()
    if not names:
        raise AssertionError(f"{proof} --list names no check")
    suite = unittest.TestSuite()
    for section, checks in (
        ("sequencer", names),
        ("no permission", [FAILURE_CHECK]),
        ("no sequencer", [FAILURE_CHECK]),
    ):
        suite.addTests(AlsaCheck(section, name) for name in checks)
        suite.addTest(NothingElseIsWritten(section, checks))
    return suite


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
