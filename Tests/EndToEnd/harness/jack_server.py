import itertools
import os
import pathlib
import sys

from .sandbox import tool
from .waiting import wait_for

PERIOD = 256
# A client that has no time for a whole period loses what arrives in it. Where the times do not matter, long
# periods let the tests pass on a busy machine too.
LONG_PERIOD = 2048
RATE = 48000

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

    def __init__(self, sandbox, period=PERIOD):
        self._sandbox = sandbox
        self._period = period
        self.name = isolate_from_servers(sandbox)
        driver = ["-d", "dummy", "-p", self._period, "-r", RATE]
        self._command = [tool("jackd"), "-n", self.name, "-r", *driver]
        self._start()

    def _start(self):
        self.program = self._sandbox.start("jackd", self._command)
        self.program.before_end = self._wait_for_clients_to_go
        self.program.after_end = self._clear_up
        wait_for(lambda: is_server_there(self._sandbox), "the JACK server")

    def restart(self):
        """Starts a new server of the same name. The one before must have ended."""
        self.program.wait_for_end()
        # The new one takes over what it has left.
        self.program.after_end = lambda: None
        self._start()

    def _wait_for_clients_to_go(self):
        # A server that is ended while it still mourns a client that died may hang.
        try:
            wait_for(lambda: all(port.startswith("system:") for port in self.ports()), "the clients' end", 5)
        except AssertionError as error:
            print(error, file=sys.stderr)

    def _clear_up(self):
        if self.program.process.returncode != 0:
            # Killed, or ended by the broken pipe to a client that was quicker: it still holds one of the
            # eight places that a machine has for servers. The next server of its name gives that back.
            self.program.after_end = lambda: None
            successor = self._sandbox.start("jackd", self._command)
            wait_for(lambda: is_server_there(self._sandbox), "a successor of the JACK server")
            successor.end()
        # Those of clients that outlived their server stay otherwise.
        for path in pathlib.Path("/dev/shm").glob(f"jack_sem.*_{self.name}_*"):
            path.unlink(missing_ok=True)

    def ports(self):
        return self._sandbox.run(tool("jack_lsp")).stdout.splitlines()


def is_server_there(sandbox):
    return sandbox.run(tool("jack_lsp"), environment={"JACK_NO_START_SERVER": "1"}).returncode == 0
