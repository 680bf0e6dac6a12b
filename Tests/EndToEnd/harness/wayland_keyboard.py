import tempfile
import time

from .keys import CODES
from .wayland_client import WaylandClient, words

# The kernel's codes are those of X without this.
X_OFFSET = 8
# The layouts, in the order of the keymap's groups.
GROUPS = ("us", "de", "ru")
_KEYMAP = """xkb_keymap {
    xkb_keycodes { include "evdev+aliases(qwerty)" };
    xkb_types { include "complete" };
    xkb_compat { include "complete" };
    xkb_symbols { include "pc+us+de:2+ru:3+inet(evdev)" };
};
"""
_XKB_FORMAT = 1
# Keys that change what others mean, with their bits in every keymap.
_MODIFIERS = {"Shift_L": 1, "Control_L": 4}


class WaylandKeyboard(WaylandClient):
    """A keyboard of a Wayland session whose keys a test presses. The tools that type text do not press the keys on
    which the letters stand."""

    def __init__(self, sandbox, session):
        super().__init__(sandbox, session)
        self._modifiers = 0
        self._group = 0
        self._time = 0
        seat, manager = self._bind("wl_seat"), self._bind("zwp_virtual_keyboard_manager_v1")
        self._keyboard = self._new()
        self._request(manager, 0, words(seat, self._keyboard))
        with tempfile.TemporaryFile() as keymap:
            size = keymap.write(_KEYMAP.encode() + b"\0")
            keymap.flush()
            self._request(self._keyboard, 0, words(_XKB_FORMAT, size), keymap.fileno())
        self.synchronize()

    def press(self, *keys):
        """Presses keys, named as in CODES, and keeps them down."""
        for key in keys:
            self._move(key, 1)
            self._set_modifiers(self._modifiers | _MODIFIERS.get(key, 0))
        self.synchronize()

    def release(self, *keys):
        for key in keys:
            self._move(key, 0)
            self._set_modifiers(self._modifiers & ~_MODIFIERS.get(key, 0))
        self.synchronize()

    def tap(self, *keys):
        """Presses and releases each."""
        for key in keys:
            self.press(key)
            self.release(key)

    def choose_layout(self, name):
        """One of GROUPS."""
        self._group = GROUPS.index(name)
        self._tell_modifiers()
        self.synchronize()

    def vanish(self):
        """As if it were unplugged."""
        self._request(self._keyboard, 3)
        self.synchronize()

    def _move(self, key, is_pressed):
        # No key goes up and down again within a millisecond, however fast a test is.
        self._time = max(self._time + 1, int(time.monotonic() * 1000))
        self._request(self._keyboard, 1, words(self._time & 0xFFFFFFFF, CODES[key] - X_OFFSET, is_pressed))

    def _set_modifiers(self, modifiers):
        if modifiers != self._modifiers:
            self._modifiers = modifiers
            self._tell_modifiers()

    def _tell_modifiers(self):
        self._request(self._keyboard, 2, words(self._modifiers, 0, 0, self._group))
