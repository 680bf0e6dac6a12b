import os
import struct

from .wayland_client import WaylandClient, text, words
from .wayland_keyboard import X_OFFSET

_SIZE = 200
_XRGB = 1


class WaylandWindow(WaylandClient):
    """A window of another program, which gets the keyboard when it opens, and what it is told of the keyboard.
    Only `synchronize` listens."""

    def __init__(self, sandbox, session, title):
        super().__init__(sandbox, session)
        self.has_keyboard = False
        # The group that the keyboard was in when the window was told last.
        self.group = None
        # What came: the key as the server numbers it, and whether it was pressed.
        self.keys = []
        self._is_configured = False
        compositor, shell, memory = (self._bind(name) for name in ("wl_compositor", "xdg_wm_base", "wl_shm"))
        self._bind_keyboard()
        self._surface = self._new()
        self._request(compositor, 0, words(self._surface))
        self._role = self._new(self._listen_to_role)
        self._request(shell, 2, words(self._role, self._surface))
        window = self._new()
        self._request(self._role, 1, words(window))
        self._request(window, 2, text(title))
        self._commit()
        while not self._is_configured:
            self.synchronize()
        self._request(self._surface, 1, words(self._picture(memory), 0, 0))
        self._commit()
        self.synchronize()

    def _bind_keyboard(self):
        seat = self._bind("wl_seat")
        self.synchronize()
        keyboard = self._new(self._listen_to_keyboard)
        self._request(seat, 1, words(keyboard))

    def _picture(self, memory):
        file = os.memfd_create("picture")
        os.truncate(file, 4 * _SIZE * _SIZE)
        pool = self._new()
        self._request(memory, 0, words(pool, 4 * _SIZE * _SIZE), file)
        os.close(file)
        picture = self._new()
        self._request(pool, 0, words(picture, 0, _SIZE, _SIZE, 4 * _SIZE, _XRGB))
        return picture

    def _commit(self):
        self._request(self._surface, 6)

    def _listen_to_role(self, _operation, serial):
        self._request(self._role, 4, serial)
        self._is_configured = True

    def _listen_to_keyboard(self, operation, content):
        if operation in (1, 2):
            self.has_keyboard = operation == 1
        elif operation == 3:
            _serial, _time, code, is_pressed = struct.unpack("=4I", content)
            self.keys.append((code + X_OFFSET, bool(is_pressed)))
        elif operation == 4:
            self.group = struct.unpack("=5I", content)[4]
