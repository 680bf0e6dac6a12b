import itertools
import os
import pathlib
import sys

from .sandbox import tool
from .waiting import wait_for

# Long, so that a busy machine seldom misses one.
PERIOD = 2048
# Of a server that goes on without the clients that got no time in a period.
LONG_PERIOD = 8192
RATE = 48000
# One that gets no time for its threads for a second gives up.
MOST_STARTS = 20

_numbers = itertools.count(1)


def isolate_from_servers(sandbox):
    """Points the sandbox's programs at a server name that nobody else uses. Returns the name."""
    name = f"tavro-{os.getpid()}-{next(_numbers)}"
    servers = {"JACK_DEFAULT_SERVER": name, "JACK_NO_AUDIO_RESERVATION": "1"}
    # Elsewhere there is an ALSA sequencer too, which the program would prefer.
    sandbox.environment |= servers | {"TAVRO_MIDI": "jack"}
    return name


class JackServer:
    """A server with the dummy driver, of its own name."""

    def __init__(self, sandbox, period=PERIOD, waits=True):
        self._sandbox = sandbox
        self._period = period if waits else LONG_PERIOD
        self.name = isolate_from_servers(sandbox)
        driver = ["-d", "dummy", "-p", self._period, "-r", RATE]
        # A period ends when every client has worked through it. By itself the server goes on without one that
        # got no time, as on a busy machine, and what was in that period is lost.
        waiting = ["-S"] if waits else []
        self._command = [tool("jackd"), "-n", self.name, "-r", *waiting, *driver]
        self._start()

    def _start(self):
        self.program = self._start_program()
        self.program.before_end = self._wait_for_clients_to_go
        self.program.after_end = self._clear_up

    def _start_program(self):
        for _ in range(MOST_STARTS):
            program = self._sandbox.start("jackd", self._command)
            wait_for(lambda: is_server_there(self._sandbox) or not program.is_running(), "the JACK server")
            if program.is_running():
                return program
        raise AssertionError("the JACK server ends by itself")

    def restart(self):
        """Starts a new server of the same name. The one before must have ended."""
        self.program.wait_for_end()
        # The new one takes over what it has left.
        self.program.after_end = lambda: None
        self._start()

    def _wait_for_clients_to_go(self):
        # A server that is ended while it still mourns a client that died may hang.
        try:
            wait_for(lambda: all(port.startswith("system:") for port in self.ports()), "the clients' end", 20)
        except AssertionError as error:
            print(error, file=sys.stderr)

    def _clear_up(self):
        if self.program.process.returncode != 0:
            # Killed, or ended by the broken pipe to a client that was quicker: it still holds one of the
            # eight places that a machine has for servers. The next server of its name gives that back.
            self.program.after_end = lambda: None
            self._start_program().end()
        # Those of clients that outlived their server stay otherwise.
        for path in pathlib.Path("/dev/shm").glob(f"jack_sem.*_{self.name}_*"):
            path.unlink(missing_ok=True)

    def ports(self):
        return self._sandbox.run(tool("jack_lsp")).stdout.splitlines()


def is_server_there(sandbox):
    return sandbox.run(tool("jack_lsp"), environment={"JACK_NO_START_SERVER": "1"}).returncode == 0
