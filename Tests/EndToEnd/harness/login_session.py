import pathlib
import signal
import socket
import sys

from .sandbox import tool

SERVICES = pathlib.Path(__file__).with_name("recorded_services.py")

# Whoever comes may have any name, and nobody is started.
SETTINGS = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>{kind}</type>
  <listen>unix:path={path}</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""


class LoginSession:
    """Message buses of the test's own, and the services of a login session on them."""

    def __init__(self, sandbox):
        self._sandbox = sandbox
        for kind in ("system", "session"):
            path = sandbox.folder / f"{kind}-bus"
            settings = sandbox.folder / f"{kind}-bus.conf"
            settings.write_text(SETTINGS.format(kind=kind, path=path))
            bus = sandbox.start(
                f"{kind}-bus", [tool("dbus-daemon"), "--nofork", "--print-address", f"--config-file={settings}"]
            )
            bus.wait_for_line(lambda line: line.startswith("unix:"), "its address")
            sandbox.environment[f"DBUS_{kind.upper()}_BUS_ADDRESS"] = f"unix:path={path}"

    def start(self, kind, *options):
        return Service(self._sandbox.start(kind, [sys.executable, SERVICES, kind, *options]))


class Service:
    """One that runs and answers as told."""

    def __init__(self, program):
        self._program = program
        program.ends_with_input = True
        program.wait_for_line(lambda line: line == "ready", "its start")

    def tell(self, words):
        before = self._count(words)
        self._program.write(words)
        self._program.wait_for_line(
            lambda line: line == f"done {words}" and self._count(words) > before, f"the end of '{words}'"
        )

    def _count(self, words):
        return self._program.lines.count(f"done {words}")

    def fall_silent(self):
        """Keeps its name and answers nobody."""
        self._program.process.send_signal(signal.SIGSTOP)

    def speak_again(self):
        self._program.process.send_signal(signal.SIGCONT)

    def end(self):
        self._program.end()


def silent_bus(sandbox, kind):
    """A socket that takes every connection and never says a word."""
    path = sandbox.folder / f"silent-{kind}-bus"
    listening = socket.socket(socket.AF_UNIX)
    listening.bind(str(path))
    listening.listen()
    sandbox.at_close(listening.close)
    sandbox.environment[f"DBUS_{kind.upper()}_BUS_ADDRESS"] = f"unix:path={path}"
