import contextlib

from .display import Display


class SecondScreen(Display):
    """The second screen of a display that has one. No window manager is there; windows get the keyboard for the
    asking."""

    def __init__(self, sandbox):
        self._sandbox = sandbox

    @contextlib.contextmanager
    def for_new_programs(self):
        """What is started meanwhile opens its windows there."""
        before = self._sandbox.environment["DISPLAY"]
        self._sandbox.environment["DISPLAY"] = f"{before}.1"
        try:
            yield
        finally:
            self._sandbox.environment["DISPLAY"] = before

    def windows(self, name):
        found = self._xdotool("search", "--screen", 1, "--onlyvisible", "--name", f"^{name}$")
        return found.stdout.split()

    def activate(self, window):
        self._do("windowfocus", window)
        self.wait_for_focus(window)
