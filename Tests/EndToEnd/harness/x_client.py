import ctypes
import time

from .keys import CODES
from .waiting import wait_for

_KEY_PRESS = 2
_CLIENT_MESSAGE = 33
_TO_WINDOW_MANAGER = 0x180000  # The masks of substructure redirection and notification.


class _KeyEvent(ctypes.Structure):
    _fields_ = [
        ("type", ctypes.c_int),
        ("serial", ctypes.c_ulong),
        ("send_event", ctypes.c_int),
        ("display", ctypes.c_void_p),
        ("window", ctypes.c_ulong),
        ("root", ctypes.c_ulong),
        ("subwindow", ctypes.c_ulong),
        ("time", ctypes.c_ulong),
        ("x", ctypes.c_int),
        ("y", ctypes.c_int),
        ("x_root", ctypes.c_int),
        ("y_root", ctypes.c_int),
        ("state", ctypes.c_uint),
        ("keycode", ctypes.c_uint),
        ("same_screen", ctypes.c_int),
    ]


class _ClientMessage(ctypes.Structure):
    _fields_ = [
        ("type", ctypes.c_int),
        ("serial", ctypes.c_ulong),
        ("send_event", ctypes.c_int),
        ("display", ctypes.c_void_p),
        ("window", ctypes.c_ulong),
        ("message_type", ctypes.c_ulong),
        ("format", ctypes.c_int),
        ("data", ctypes.c_long * 5),
    ]


class _Event(ctypes.Union):
    # As large as the library's own.
    _fields_ = [("key", _KeyEvent), ("message", _ClientMessage), ("padding", ctypes.c_long * 24)]


_ErrorHandler = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)


class ErrorsIgnored:
    """Collects what the server refuses meanwhile. The library's own handler would end the test's process."""

    def __init__(self, library):
        self._x = library
        self._x.XSetErrorHandler.restype = ctypes.c_void_p
        self.errors = []
        self._handler = _ErrorHandler(lambda display, error: self.errors.append(error) or 0)

    def __enter__(self):
        self._before = ctypes.c_void_p(self._x.XSetErrorHandler(self._handler))
        return self

    def __exit__(self, *_):
        self._x.XSetErrorHandler(self._before)


class XClient:
    """A connection of the test's own to the X server: for the server, one more program."""

    def __init__(self, sandbox):
        self._x = _library("libX11.so.6")
        self._x.XOpenDisplay.restype = ctypes.c_void_p
        self._x.XDefaultRootWindow.restype = ctypes.c_ulong
        self._display = ctypes.c_void_p(self._x.XOpenDisplay(sandbox.environment["DISPLAY"].encode()))
        if not self._display:
            raise AssertionError("no connection to the X server")
        self.root = ctypes.c_ulong(self._x.XDefaultRootWindow(self._display))

    def close(self):
        """The second time nothing happens."""
        if self._display is not None:
            self._x.XCloseDisplay(self._display)
            self._display = None

    def synchronize(self):
        """Waits until the server has done what was asked for."""
        self._x.XSync(self._display, 0)


class WindowList(XClient):
    """The list of windows on a desktop's panel. It needs neither the keyboard nor the window in front."""

    def close_window(self, window):
        """Asks the window manager to do what a click on the window's close button does."""
        self._x.XInternAtom.restype = ctypes.c_ulong
        event = _Event()
        event.message.type = _CLIENT_MESSAGE
        event.message.window = int(window)
        event.message.message_type = self._x.XInternAtom(self._display, b"_NET_CLOSE_WINDOW", 0)
        event.message.format = 32
        what = (ctypes.c_long(_TO_WINDOW_MANAGER), ctypes.byref(event))
        self._x.XSendEvent(self._display, self.root, 0, *what)
        self.synchronize()


class Typist(XClient):
    """Types by the server's test extension, as quickly as wanted. Keys are named as in CODES."""

    def __init__(self, sandbox):
        super().__init__(sandbox)
        self._test = _library("libXtst.so.6")
        # The keys that were let go, and when the server had certainly done it, once that is known.
        self._released = {}

    def send(self, key, is_press):
        """One event, without waiting, except where a key goes down that has only just gone up. Toolkits take a
        release and a press of the same millisecond for a repeat, and no keyboard is so quick."""
        if is_press:
            self._wait_for_next_millisecond(key)
        else:
            self._released[key] = None
        self._test.XTestFakeKeyEvent(self._display, CODES[key], int(is_press), ctypes.c_ulong(0))
        self._x.XFlush(self._display)

    def synchronize(self):
        super().synchronize()
        now = time.monotonic()
        self._released = {key: now if when is None else when for key, when in self._released.items()}

    def _wait_for_next_millisecond(self, key):
        if key not in self._released:
            return
        if self._released[key] is None:
            self.synchronize()
        while time.monotonic() < self._released[key] + 0.002:
            time.sleep(0.0005)
        del self._released[key]

    def press(self, *keys):
        for key in keys:
            self.send(key, True)
        self.synchronize()

    def release(self, *keys):
        for key in keys:
            self.send(key, False)
        self.synchronize()

    def tap(self, *combinations):
        """Each is a key, or keys joined by blanks, the last of which is tapped while the others are held."""
        for combination in combinations:
            keys = combination.split()
            for key in keys:
                self.send(key, True)
            for key in reversed(keys):
                self.send(key, False)
        self.synchronize()


class KeyHolder(XClient):
    """A program that has reserved keys for itself, the way desktops do for their shortcuts."""

    ANY_MODIFIER = 1 << 15
    SUPER = 1 << 6
    _ASYNCHRONOUS = 1

    def hold(self, *keys, modifiers=ANY_MODIFIER):
        with ErrorsIgnored(self._x) as refused:
            for key in keys:
                how = (0, self._ASYNCHRONOUS, self._ASYNCHRONOUS)
                self._x.XGrabKey(self._display, CODES[key], modifiers, self.root, *how)
            self.synchronize()
        if refused.errors:
            raise AssertionError(f"the server refused to reserve {keys}")

    def let_go(self, *keys, modifiers=ANY_MODIFIER):
        for key in keys:
            self._x.XUngrabKey(self._display, CODES[key], modifiers, self.root)
        self.synchronize()

    def hold_all(self):
        """Takes the whole keyboard, as a screen locker does."""
        how = (0, self._ASYNCHRONOUS, self._ASYNCHRONOUS, ctypes.c_ulong(0))
        if self._x.XGrabKeyboard(self._display, self.root, *how) != 0:
            raise AssertionError("the server refused the keyboard")

    def hold_all_soon(self):
        """The same, as soon as no other program has it."""
        how = (0, self._ASYNCHRONOUS, self._ASYNCHRONOUS, ctypes.c_ulong(0))
        wait_for(
            lambda: self._x.XGrabKeyboard(self._display, self.root, *how) == 0,
            "the keyboard to be given to the other program",
        )

    def let_all_go(self):
        self._x.XUngrabKeyboard(self._display, ctypes.c_ulong(0))
        self.synchronize()

    def presses(self):
        """The names of the keys that were pressed since the last look."""
        self.synchronize()
        names = {code: name for name, code in CODES.items()}
        found = []
        event = _Event()
        while self._x.XPending(self._display):
            self._x.XNextEvent(self._display, ctypes.byref(event))
            if event.key.type == _KEY_PRESS:
                found.append(names[event.key.keycode])
        return found


def _library(name):
    try:
        return ctypes.CDLL(name)
    except OSError as error:
        raise AssertionError(f"{error}; this test needs the packages xdotool needs") from error
