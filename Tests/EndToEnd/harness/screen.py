import ctypes

from .x_client import XClient

_ALL_PLANES = ctypes.c_ulong(0xFFFFFFFF)
_BY_PIXEL = 2


class Screen(XClient):
    """What is to be seen."""

    def __init__(self, sandbox):
        super().__init__(sandbox)
        self._x.XGetImage.restype = ctypes.c_void_p
        self._x.XGetPixel.restype = ctypes.c_ulong

    def colour(self, window, x, y):
        """Red, green and blue of one point of a window that nothing covers, as one number."""
        place = (ctypes.c_ulong(int(window)), x, y, 1, 1)
        taken = self._x.XGetImage(self._display, *place, _ALL_PLANES, _BY_PIXEL)
        if not taken:
            raise AssertionError(f"no picture of the point {x}, {y} of the window {window}")
        image = ctypes.c_void_p(taken)
        colour = self._x.XGetPixel(image, 0, 0)
        self._x.XDestroyImage(image)
        return colour & 0xFFFFFF
