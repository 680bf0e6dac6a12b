import array
import ctypes

from .x_client import ErrorsIgnored, XClient

_ALL_PLANES = ctypes.c_ulong(0xFFFFFFFF)
_BY_PIXEL = 2
_COLOUR = 0xFFFFFF


class _Image(ctypes.Structure):
    # The beginning of the library's own.
    _fields_ = [
        ("width", ctypes.c_int),
        ("height", ctypes.c_int),
        ("xoffset", ctypes.c_int),
        ("format", ctypes.c_int),
        ("data", ctypes.c_void_p),
        ("byte_order", ctypes.c_int),
        ("bitmap_unit", ctypes.c_int),
        ("bitmap_bit_order", ctypes.c_int),
        ("bitmap_pad", ctypes.c_int),
        ("depth", ctypes.c_int),
        ("bytes_per_line", ctypes.c_int),
        ("bits_per_pixel", ctypes.c_int),
    ]


class Screen(XClient):
    """What is to be seen. Colours are red, green and blue as one number."""

    def __init__(self, sandbox):
        super().__init__(sandbox)
        self._x.XGetImage.restype = ctypes.c_void_p

    def colours(self, window, x, y, width=1, height=1):
        """Row by row, of a part of a window that nothing covers; none when not all of it is on the screen."""
        place = (ctypes.c_ulong(int(window)), x, y, width, height)
        with ErrorsIgnored(self._x):
            taken = self._x.XGetImage(self._display, *place, _ALL_PLANES, _BY_PIXEL)
        if not taken:
            return []
        image = ctypes.cast(taken, ctypes.POINTER(_Image)).contents
        assert image.bits_per_pixel == 32, "a display of another depth"
        points = array.array("I", ctypes.string_at(image.data, image.bytes_per_line * height))
        self._x.XDestroyImage(ctypes.c_void_p(taken))
        line = len(points) // height
        return [colour & _COLOUR for row in range(height) for colour in points[row * line :][:width]]

    def colour(self, window, x, y):
        """Of one point; None when it is not on the screen."""
        found = self.colours(window, x, y)
        return found[0] if found else None

    def only_colour(self, window, x, y, width, height):
        """Of a part of a window, when all of it has one; None otherwise."""
        found = set(self.colours(window, x, y, width, height))
        return found.pop() if len(found) == 1 else None
