"""What the benchmarks run on: the sandbox, display and JACK server of the tests from outside."""
import os
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "Tests" / "EndToEnd"))

# pylint: disable=wrong-import-position
from harness.display import Display
from harness.jack_server import RATE, JackServer, is_server_there, isolate_from_servers
from harness.pipewire_session import PipeWireSession
from harness.sandbox import Sandbox, tool
from harness.waiting import wait_for

PRIORITY = 20

__all__ = ["Display", "RealTimeServer", "Sandbox", "Stage", "tool", "wait_for"]


class RealTimeServer(JackServer):
    """As in the tests, but with the priority of a real server, where the machine allows it."""

    def __init__(self, sandbox, period):  # pylint: disable=super-init-not-called
        self._sandbox = sandbox
        self._period = period
        self.name = isolate_from_servers(sandbox)
        driver = ["-d", "dummy", "-p", period, "-r", RATE]
        self._command = [tool("jackd"), "-n", self.name, "-R", "-P", PRIORITY, *driver]
        self.program = sandbox.start("jackd", self._command)
        self.program.before_end = self._wait_for_clients_to_go
        self.program.after_end = self._clear_up
        wait_for(lambda: is_server_there(sandbox), "the JACK server")

    def describe(self):
        priority = "real-time" if self._is_real_time() else "no real-time"
        return f"jackd, period {self._period} at {RATE} Hz, {priority} priority"

    def _is_real_time(self):
        """Whether it really got the priority: one that may not have it goes on without."""
        threads = os.listdir(f"/proc/{self.program.pid}/task")
        return any(os.sched_getscheduler(int(thread)) == os.SCHED_FIFO for thread in threads)


class PipeWire(PipeWireSession):
    """PipeWire in the place of a JACK server, with the same period for everybody."""

    def __init__(self, sandbox, period):
        super().__init__(sandbox)
        self._period = period
        self.force("quantum", period)
        self.force("rate", RATE)

    def describe(self):
        return f"PipeWire, quantum {self._period} at {RATE} Hz"


SERVERS = {"jackd": RealTimeServer, "pipewire": PipeWire}


class Stage:
    """A display and a server of their own; everything ends with the `with` block."""

    def __init__(self, arguments):
        self.sandbox = Sandbox()
        try:
            self.server = SERVERS[arguments.server](self.sandbox, arguments.period)
            self.display = Display(self.sandbox)
        except BaseException:
            self.sandbox.close()
            raise
        if arguments.rendering != "software":
            # The toolkit's own choice; without a graphics card that is OpenGL computed by the processor.
            self.sandbox.environment.pop("QT_QUICK_BACKEND")

    def __enter__(self):
        return self

    def __exit__(self, kind, value, trace):
        logs = self.sandbox.close()
        if kind is not None:
            print(logs, file=sys.stderr)

    def describe(self):
        return self.server.describe()


def add_stage_options(parser):
    parser.add_argument("--build", type=pathlib.Path, default=ROOT / "build" / "release", help="build folder")
    parser.add_argument("--period", type=int, default=256, help="frames of a JACK period")
    parser.add_argument("--server", choices=SERVERS, default="jackd")
    parser.add_argument("--rendering", choices=("software", "default"), default="software")


def built(arguments, name):
    path = (arguments.build / "bin" / name).resolve()
    if not os.access(path, os.X_OK):
        raise SystemExit(f"{path} is not there; see Benchmarks/README.md for how to build it")
    return path
