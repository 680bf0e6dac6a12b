import sys
import unittest

from .sandbox import Sandbox


class EndToEndTest(unittest.TestCase):
    """Gives every test a sandbox, and shows what its programs wrote when the test fails."""

    def run(self, result=None):
        result = result or self.defaultTestResult()
        before = len(result.failures) + len(result.errors)
        self._logs = ""
        super().run(result)
        if len(result.failures) + len(result.errors) > before:
            print(f"\n=== {self.id()}: what its programs wrote\n{self._logs}", file=sys.stderr)
        return result

    def setUp(self):
        self.sandbox = Sandbox()
        self.addCleanup(self._close)

    def _close(self):
        self._logs = self.sandbox.close()
