import json
import os
import pathlib
import re

from .sandbox import tool
from .waiting import wait_for

# Nothing of a user's or a distribution's settings, and no X server behind the windows' backs.
WIDTH, HEIGHT = 1600, 1200
SETTINGS = f"""xwayland disable
output * resolution {WIDTH}x{HEIGHT} position 0 0
default_border none
seat * hide_cursor 0
"""


class WaylandSession:
    """A compositor of its own without a screen, and without an X server: programs can only speak Wayland."""

    def __init__(self, sandbox):
        self._sandbox = sandbox
        # Where a session runs already, its display must not be taken for this one's.
        sandbox.environment.pop("DISPLAY", None)
        settings = sandbox.folder / "sway.config"
        settings.write_text(SETTINGS)
        headless = {
            "WLR_BACKENDS": "headless",
            "WLR_LIBINPUT_NO_DEVICES": "1",
            "WLR_RENDERER": "pixman",
            "XDG_SESSION_TYPE": "wayland",
        }
        sandbox.environment |= headless
        sway = [tool("sway"), "--unsupported-gpu", "--config", settings]
        if os.geteuid() == 0:
            # It refuses root; for it alone, the same user has another number. That makes the system forget
            # that it is to end with the test, hence the reminder.
            other = [tool("unshare"), "--user", "--map-user=1000", "--map-group=1000"]
            sway = [*other, tool("setpriv"), "--pdeathsig", "TERM", *sway]
        self.compositor = sandbox.start("sway", sway)
        runtime = sandbox.environment["XDG_RUNTIME_DIR"]
        self._socket = self._wait_for_file(runtime, r"sway-ipc\..*\.sock")
        self.name = self._wait_for_file(runtime, r"wayland-\d+").name
        sandbox.environment |= {"WAYLAND_DISPLAY": self.name, "QT_QUICK_BACKEND": "software"}
        wait_for(self._outputs, "a screen of the Wayland session")

    def _wait_for_file(self, folder, pattern):
        def look():
            if not self.compositor.is_running():
                raise AssertionError(f"sway ended with {self.compositor.process.returncode}")
            return [path for path in pathlib.Path(folder).iterdir() if re.fullmatch(pattern, path.name)]

        return wait_for(look, f"{pattern} of sway")[0]

    def _ask(self, *words):
        answer = self._sandbox.run(tool("swaymsg"), "--socket", self._socket, "--raw", *words)
        return json.loads(answer.stdout) if answer.returncode == 0 else None

    def _outputs(self):
        return [output for output in self._ask("-t", "get_outputs") or [] if output["active"]]

    def windows(self, title):
        """The windows with that title, as sway describes them."""
        found = []
        waiting = [self._ask("-t", "get_tree") or {}]
        while waiting:
            node = waiting.pop()
            waiting += node.get("nodes", []) + node.get("floating_nodes", [])
            if node.get("pid") and node.get("name") == title:
                found.append(node)
        return found

    def wait_for_window(self, title):
        return wait_for(lambda: self.windows(title), f"a window with the title {title}")[0]

    def let_keys_repeat(self, delay, rate):
        """After so many milliseconds, and so often in a second."""
        self._ask(f"input type:keyboard repeat_delay {delay}")
        self._ask(f"input type:keyboard repeat_rate {rate}")

    def give_keyboard(self, window):
        """Brings a window to the front, as its user would."""
        self._ask(f"[con_id={window['id']}] focus")

    def close(self, window):
        """Asks a window to close, as its user would."""
        self._ask(f"[con_id={window['id']}] kill")
