"""What a window manager and its clients say about windows."""

import re

from .sandbox import tool
from .waiting import wait_for


class WindowProperties:
    """The properties of one window, as the X server has them now."""

    def __init__(self, sandbox, window):
        self._sandbox = sandbox
        self.window = window

    def _read(self, *names):
        return self._sandbox.run(tool("xprop"), "-id", self.window, *names).stdout

    def geometry(self):
        """(left, top, width, height) of the content on the screen."""
        # xdotool counts the frame twice.
        answer = self._sandbox.run(tool("xwininfo"), "-id", self.window).stdout
        names = ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
        return tuple(int(re.search(rf"{name}: +(-?\d+)", answer).group(1)) for name in names)

    def size(self):
        return self.geometry()[2:]

    def wait_for_size(self, size):
        wait_for(lambda: self.size() == size, lambda: f"the size {size}; it is {self.size()}")

    def limits(self):
        """The smallest and the largest size and the proportions that the program asks for."""
        hints = self._read("WM_NORMAL_HINTS")

        def numbers(words):
            found = re.search(rf"{words}: (\d+)(?: by |/)(\d+)", hints)
            return found and tuple(int(number) for number in found.groups())

        return numbers("minimum size"), numbers("maximum size"), numbers("minimum aspect ratio")

    def wait_for_limits(self, *limits):
        wait_for(lambda: self.limits() == limits, lambda: f"the limits {limits}; they are {self.limits()}")

    def is_managed(self):
        return "window state:" in self._read("WM_STATE")

    def is_iconic(self):
        return "window state: Iconic" in self._read("WM_STATE")

    def wait_until_iconic(self, is_iconic=True):
        words = "off" if is_iconic else "back on"
        wait_for(lambda: self.is_iconic() == is_iconic, f"the window to be {words} the screen")

    def icon_sizes(self):
        """The sizes of the pictures that the window has for the desktop."""
        # As numbers: drawn with characters, the large ones are left out.
        name = "_NET_WM_ICON"
        answer = self._read("-len", "4000000", "-notype", "-f", name, "32c", " = $0+\n", name)
        numbers = [int(number) for number in answer.partition("=")[2].split(",") if number.strip()]
        sizes, place = set(), 0
        while place < len(numbers):
            width, height = numbers[place : place + 2]
            sizes.add(width)
            place += 2 + width * height
        return sizes


def windows_titled(sandbox, title):
    """The windows of that title that the window manager knows, on the screen or not."""
    found = sandbox.run(tool("xdotool"), "search", "--name", f"^{title}$").stdout.split()
    return [window for window in found if WindowProperties(sandbox, window).is_managed()]
