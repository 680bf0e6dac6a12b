import os

from .sandbox import tool
from .screen import Screen
from .waiting import wait_for

# Only what the tests use: the bindings of a user or of a distribution could swallow a key or a click.
WINDOW_MANAGER_SETTINGS = """<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><followMouse>no</followMouse></focus>
  <desktops><number>1</number></desktops>
  <keyboard><keybind key="A-F4"><action name="Close"/></keybind></keyboard>
  <mouse/>
</openbox_config>
"""

# In milliseconds; no key is held for so long, and xset takes no more.
LONGEST_REPEAT_DELAY = 10_000


class Display:
    """An X server of its own with a window manager, a keyboard with the us layout, and its windows."""

    def __init__(self, sandbox, size=(1400, 1000), screens=1):
        self._sandbox = sandbox
        self._screen = None
        reading, writing = os.pipe()
        shape = f"{size[0]}x{size[1]}x24"
        screen = [word for number in range(screens) for word in ("-screen", number, shape)]
        others = ["-nolisten", "tcp", "-noreset"]
        self._server = sandbox.start("Xvfb", [tool("Xvfb"), "-displayfd", writing, *screen, *others], pass_fds=(writing,))
        os.close(writing)
        with os.fdopen(reading) as answer:
            number = answer.readline().strip()
        if not number:
            raise AssertionError("the X server did not start")
        sandbox.environment |= {"DISPLAY": f":{number}", "QT_QUICK_BACKEND": "software"}
        settings = sandbox.folder / "openbox.xml"
        settings.write_text(WINDOW_MANAGER_SETTINGS)
        self._manager = sandbox.start("openbox", [tool("openbox"), "--sm-disable", "--config-file", settings])
        check = [tool("xprop"), "-root", "_NET_SUPPORTING_WM_CHECK"]
        wait_for(lambda: "window id" in sandbox.run(*check).stdout, "the window manager")
        self.keep_keys_from_repeating()

    def keep_keys_from_repeating(self):
        """As at the beginning: what a held key types would depend on how long the machine lets it be held."""
        self._set_repeats(LONGEST_REPEAT_DELAY, 1)

    def let_keys_repeat(self):
        """As keyboards do."""
        self._set_repeats(660, 25)

    def _set_repeats(self, delay, rate):
        done = self._sandbox.run(tool("xset"), "r", "rate", delay, rate)
        # It does not tell by its status what it has not understood.
        if done.returncode != 0 or done.stderr:
            raise AssertionError(f"xset: {done.stderr}")

    @property
    def screen(self):
        """What is to be seen on it."""
        if self._screen is None:
            self._screen = Screen(self._sandbox)
            self._sandbox.at_close(self._screen.close)
        return self._screen

    def end_server(self):
        """With it goes whatever was on it, and a test's process too that still has a connection of its own."""
        if self._screen is not None:
            self._screen.close()
        self._server.end()

    def end_window_manager(self):
        """From here on windows have the size that is asked for, and the keys go to none."""
        self._manager.end()

    def _xdotool(self, *arguments):
        return self._sandbox.run(tool("xdotool"), *arguments)

    def _do(self, *arguments):
        done = self._xdotool(*arguments)
        if done.returncode != 0:
            raise AssertionError(f"xdotool {' '.join(map(str, arguments))}: {done.stderr}")
        return done.stdout

    def press(self, *keys):
        """Presses keys, named by their keysyms, and keeps them down."""
        self._do(*(word for key in keys for word in ("keydown", key)))

    def release(self, *keys):
        self._do(*(word for key in keys for word in ("keyup", key)))

    def tap(self, *keys):
        """Presses and releases each key; a name with plus signs is a combination."""
        self._do(*(word for key in keys for word in ("key", key)))

    def type(self, text):
        self._do("type", text)

    def at_once(self, *words):
        """Commands of xdotool, each right behind the other."""
        self._do(*words)

    def windows(self, name):
        return self._xdotool("search", "--onlyvisible", "--name", f"^{name}$").stdout.split()

    def wait_for_window(self, name):
        return wait_for(lambda: self.windows(name), f"a window with the title {name}")[0]

    def activate(self, window):
        """Brings a window to the front and waits until the keys go to it."""
        self._do("windowactivate", window)
        self.wait_for_focus(window)

    def wait_for_focus(self, window):
        """Waits until the keys go to a window."""
        wait_for(lambda: self._xdotool("getwindowfocus").stdout.strip() == window, "the keyboard focus")

    def size(self, window):
        """A window's width and height."""
        shown = self._do("getwindowgeometry", "--shell", window)
        values = dict(line.split("=") for line in shown.split())
        return tuple(int(values[name]) for name in ("WIDTH", "HEIGHT"))

    def resize(self, window, width, height):
        """Asks for a size and waits for it."""
        self._do("windowsize", window, width, height)
        wait_for(lambda: self.size(window) == (width, height), f"a window of {width} x {height}")

    def move_pointer(self, window, x, y):
        """To a place in a window."""
        self._do("mousemove", "--window", window, x, y)

    def click(self, window, x, y):
        """Clicks in a window; numbers below zero count from its right and its bottom edge."""
        width, height = self.size(window)
        self.move_pointer(window, x % width, y % height)
        self._do("click", 1)


class KeyWatch:
    """Sees the key events that go to a window, or opens a window of its own and sees those."""

    def __init__(self, sandbox, display, window=None):
        where = ["-id", window] if window else ["-name", "Elsewhere"]
        self.program = sandbox.start("xev", [tool("xev"), *where, "-event", "keyboard"])
        if window:
            wait_for(lambda: self._sees(display), "the first key event to be seen")

    def _sees(self, display):
        # A key that plays nothing.
        display.tap("Shift_L")
        return self.releases() > 0

    def presses(self):
        return sum(line.startswith("KeyPress event") for line in self.program.lines)

    def releases(self):
        return sum(line.startswith("KeyRelease event") for line in self.program.lines)
