"""Where the controls stand on the window's surface, which is drawn at one size and scaled as a whole."""

from typing import NamedTuple

WIDTH = 1280
HEIGHT = 805
# How much higher the surface is with the panel open.
ADVANCED = 104
SETTINGS = 112


class Slider(NamedTuple):
    """The middles of the knob at both ends, and the values that it has there."""

    left: int
    right: int
    y: int
    first: int
    last: int

    def x(self, value):
        return self.left + (self.right - self.left) * (value - self.first) / (self.last - self.first)


# Down to the title of the Advanced panel, and in the open panel.
ABOVE = {
    "beside everything": (640, 8),
    "presets": (306, 40),
    "save": (464, 40),
    "load": (512, 40),
    "help": (1140, 40),
    "menu": (1188, 40),
    "stop": (1236, 40),
    "root": (99, 144),
    "scale": (284, 144),
    "octave": (538, 144),
    "chord": (632, 144),
    "velocity": (968, 144),
    "humanize": (1216, 144),
    "Advanced": (80, 214),
    "complexity": (304, 293),
    "note limit": (544, 293),
    "strum": (826, 293),
    "split mode": (916, 293),
    "melody octave": (1216, 293),
}
SLIDERS = {
    "octave": Slider(419, 491, 144, -3, 3),
    "velocity": Slider(797, 921, 144, 1, 127),
    "humanize": Slider(1045, 1169, 144, 0, 30),
    "complexity": Slider(49, 257, 293, 0, 100),
    "note limit": Slider(369, 497, 293, 0, 16),
    "strum": Slider(609, 771, 293, -50, 50),
    "melody octave": Slider(1049, 1169, 293, -3, 3),
}
# What an open Advanced panel pushes down; the last of them stand in the open Settings panel.
BELOW = {
    "hold": (66, 308),
    "smart hold": (208, 308),
    "bassnote": (688, 308),
    "one octave below": (763, 308),
    "two octaves below": (815, 308),
    "chord read-out": (200, 392),
    "between keys": (198, 465),
    "Settings": (80, 769),
    "MIDI output": (140, 841),
    "MIDI system": (358, 841),
    "MIDI channel": (517, 841),
    "keyboard layout": (701, 841),
    "Global Play": (854, 841),
    "record": (1069, 841),
    "Launch at Login": (1146, 841),
}
# The keys of the us layout, top row first, with the place of each row's first one.
KEY_ROWS = (
    ("1234567890-=", 156, 465),
    ("qwertyuiop[]", 200, 539),
    ("asdfghjkl;'", 222, 613),
    ("zxcvbnm,./", 266, 687),
)
KEY_PITCH = 84
BELOW |= {
    f"key {key}": (left + KEY_PITCH * column, y)
    for keys, left, y in KEY_ROWS
    for column, key in enumerate(keys)
}

# Down the first key, beside its letters: above it, in it at both ends, and below it.
FIRST_KEY_X = 122
FIRST_KEY_YS = (428, 440, 490, 501)


class Layout(NamedTuple):
    """Which panels are open."""

    advanced: bool = False
    settings: bool = False

    @property
    def height(self):
        """Of the surface."""
        return HEIGHT + ADVANCED * self.advanced + SETTINGS * self.settings

    def place(self, name):
        """On the surface."""
        if name in ABOVE:
            return ABOVE[name]
        x, y = BELOW[name]
        return x, y + ADVANCED * self.advanced

    def first_key(self):
        """Points on the surface: above the first key, in it near both ends, and below it."""
        return [(FIRST_KEY_X, y + ADVANCED * self.advanced) for y in FIRST_KEY_YS]

    def in_window(self, place, size):
        """The same place in a window of this size: the surface stands in its middle, as large as it can be."""
        width, height = size
        scale = min(width / WIDTH, height / self.height)
        left, top = (width - WIDTH * scale) / 2, (height - self.height * scale) / 2
        x, y = place
        return round(left + x * scale), round(top + y * scale)
