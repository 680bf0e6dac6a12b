import json
import pathlib

from .login_session import LoginSession
from .sandbox import tool
from .waiting import wait_for

LONG_PERIOD = "8192/48000"
SETTINGS = {
    # PipeWire goes on without the clients that got no time in a period, and what was in that period is lost: long
    # ones, of so many frames, so that this is seldom on a busy machine.
    "pipewire/pipewire.conf.d/long-periods.conf": """context.properties = {
  default.clock.quantum = 8192
  default.clock.max-quantum = 8192
}
""",
    # The sound cards, radios and cameras of whoever runs the tests are left alone: in the words of newer session
    # managers and in those of older ones, each of which reads its own files only.
    "wireplumber/wireplumber.conf.d/without-devices.conf": """wireplumber.profiles = {
  main = {
    hardware.audio = disabled
    hardware.bluetooth = disabled
    hardware.video-capture = disabled
  }
}
""",
    "wireplumber/main.lua.d/80-without-devices.lua": """alsa_monitor.enabled = false
v4l2_monitor.enabled = false
libcamera_monitor.enabled = false
""",
    "wireplumber/bluetooth.lua.d/80-without-devices.lua": """bluez_monitor.enabled = false
if bluez_midi_monitor then
  bluez_midi_monitor.enabled = false
end
""",
}


class PipeWireSession:
    """A PipeWire of the test's own with a session manager and without devices. Whatever in the sandbox speaks JACK
    speaks to it."""

    def __init__(self, sandbox, starts=True):
        self._sandbox = sandbox
        LoginSession(sandbox)
        for name, content in SETTINGS.items():
            file = pathlib.Path(sandbox.environment["XDG_CONFIG_HOME"]) / name
            file.parent.mkdir(parents=True)
            file.write_text(content)
        # Elsewhere there is an ALSA sequencer too, which the program would prefer; and it would ask for a short
        # period.
        sandbox.environment |= {
            "LD_LIBRARY_PATH": self._libraries(),
            "TAVRO_MIDI": "jack",
            "PIPEWIRE_LATENCY": LONG_PERIOD,
        }
        if starts:
            self.start()

    def _libraries(self):
        """Where PipeWire's own libjack is: the wrapper for JACK's programs knows."""
        shown = self._sandbox.run(tool("pw-jack"), "printenv", "LD_LIBRARY_PATH")
        if shown.returncode != 0 or not shown.stdout.strip():
            raise AssertionError(f"pw-jack tells no folder of libraries: {shown.stderr}")
        return shown.stdout.strip()

    def start(self):
        self.program = self._sandbox.start("pipewire", [tool("pipewire")])
        wait_for(self._objects, "PipeWire")
        self._manager = self._sandbox.start("wireplumber", [tool("wireplumber")])
        wait_for(self._is_managed, "the session manager")

    def kill(self):
        """PipeWire dies, and nothing is left of what it knew."""
        self.program.process.kill()
        self.program.wait_for_end()
        self._manager.end()

    def restart(self):
        """Starts a new one. The one before must have ended."""
        self.program.wait_for_end()
        self._manager.end()
        self.start()

    def _objects(self, kind=""):
        shown = self._sandbox.run(tool("pw-dump"))
        if shown.returncode != 0 or not shown.stdout.strip():
            return []
        try:
            objects = json.loads(shown.stdout)
        except json.JSONDecodeError:
            # A change in the middle is written behind the list.
            return self._objects(kind)
        return [one for one in objects if one["type"].endswith(kind)]

    def _is_managed(self):
        if not self._manager.is_running():
            raise AssertionError(f"wireplumber ended with {self._manager.process.returncode}")
        clients = [one["info"]["props"] for one in self._objects("Client")]
        return any("wireplumber.daemon" in properties for properties in clients)

    def ports(self):
        """As programs that speak JACK see them."""
        return self._sandbox.run(tool("jack_lsp")).stdout.splitlines()

    def directions(self):
        """Of the ports, as PipeWire's own programs see them."""
        nodes = {node["id"]: node["info"]["props"]["node.name"] for node in self._objects("Node")}
        found = {}
        for port in self._objects("Port"):
            properties = port["info"]["props"]
            found[f"{nodes[properties['node.id']]}:{properties['port.name']}"] = port["info"]["direction"]
        return found

    def links(self):
        """Pairs of names: what leads where."""
        pairs, port = set(), None
        for line in self._sandbox.run(tool("pw-link"), "--links").stdout.splitlines():
            if line.startswith("  |-> "):
                pairs.add((port, line.removeprefix("  |-> ")))
            elif not line.startswith(" "):
                port = line
        return pairs

    def periods_asked_for(self, client):
        """What the client asks for: frames by rate; None where it asks for nothing."""
        properties = [node["info"]["props"] for node in self._objects("Node")]
        return [one.get("node.latency") for one in properties if one.get("node.name") == client]

    def led_from(self, source):
        return {target for port, target in self.links() if port == source}

    def wait_for_links(self, source, targets):
        """Waits until this port leads to these and to no others."""
        wait_for(
            lambda: self.led_from(source) == set(targets),
            lambda: f"links from {source} to {targets}; there are {self.links()}",
        )

    def force(self, setting, value):
        """Sets "quantum", a period's frames, or "rate", for everybody."""
        done = self._sandbox.run(tool("pw-metadata"), "-n", "settings", 0, f"clock.force-{setting}", value)
        if done.returncode != 0:
            raise AssertionError(f"pw-metadata: {done.stderr}")
