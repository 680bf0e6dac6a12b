"""The program ends or stops answering in whatever way, with its guard in whatever state, again and again: each time
the keyboard is the user's again, and nothing goes on sounding."""

import os
import random
import signal
import time
import unittest

from harness.guard import GUARD, GuardTest
from harness.processes import processes
from harness.threads import HungThread, thread_named
from harness.waiting import wait_for
from seeds import seed

SEED = 2611
# How many there are by themselves; the environment variable asks for another number.
FEW = 3
VARIABLE = "TAVRO_ENDINGS"
# In seconds: from within a beat of its threads to more than the guard's patience.
LONGEST_STOP = 2.0


class RandomEndingsTest(GuardTest):
    def setUp(self):
        super().setUp()
        self.random = random.Random(seed(SEED))

    def test_endings(self):
        for number in range(int(os.environ.get(VARIABLE, FEW))):
            replaced_by = self.random.choice([None, signal.SIGKILL, signal.SIGSTOP])
            ending = self.random.choice([self._signal, self._stop, self._stop_for_a_while, self._hang])
            print(f"{number}: {ending.__name__}, the guard {replaced_by or 'as it was'}", flush=True)
            self.latch_a_chord()
            if replaced_by is not None:
                self.replace_guard(replaced_by)
            time.sleep(self.random.random() / 3)
            ending()
            self.application.program.wait_for_end()
            self.assert_keyboard_is_the_users()
            self.assert_silent()
            wait_for(lambda: not processes(GUARD, self.sandbox), "the end of the guard")

    def _signal(self):
        ends = [signal.SIGKILL, signal.SIGSEGV, signal.SIGQUIT, signal.SIGTERM, signal.SIGHUP, signal.SIGINT]
        os.kill(self.pid, self.random.choice(ends))

    def _stop(self):
        self.stop_program()
        self.assert_keyboard_is_the_users()
        self.assert_silent()
        os.kill(self.pid, signal.SIGKILL)

    def _stop_for_a_while(self):
        self.stop_program()
        time.sleep(self.random.random() * LONGEST_STOP)
        os.kill(self.pid, signal.SIGCONT)
        os.kill(self.pid, self.random.choice([signal.SIGTERM, signal.SIGKILL]))

    def _hang(self):
        thread = self.random.choice([self.pid, thread_named(self.pid, "tavro-tap")])
        hung = HungThread(thread)
        self.assert_keyboard_is_the_users()
        self.assert_silent()
        hung.let_go()
        os.kill(self.pid, self.random.choice([signal.SIGTERM, signal.SIGKILL]))


if __name__ == "__main__":
    unittest.main()
