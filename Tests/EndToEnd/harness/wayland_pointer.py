import time

from .wayland_client import WaylandClient, words
from .wayland_session import HEIGHT, WIDTH

_LEFT_BUTTON = 0x110


class WaylandPointer(WaylandClient):
    """A mouse of a Wayland session; places are those on its screen."""

    def __init__(self, sandbox, session):
        super().__init__(sandbox, session)
        seat, manager = self._bind("wl_seat"), self._bind("zwlr_virtual_pointer_manager_v1")
        self._pointer = self._new()
        self._request(manager, 0, words(seat, self._pointer))
        self.synchronize()

    def click(self, x, y):
        self._tell(1, x, y, WIDTH, HEIGHT)
        for is_pressed in (1, 0):
            self._tell(2, _LEFT_BUTTON, is_pressed)
        self.synchronize()

    def _tell(self, operation, *arguments):
        now = int(time.monotonic() * 1000) & 0xFFFFFFFF
        self._request(self._pointer, operation, words(now, *arguments))
        # That was all of the event.
        self._request(self._pointer, 4)
