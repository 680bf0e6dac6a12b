"""The keys of a keyboard by their places, with what they type on the us layout and the notes they play."""

from typing import NamedTuple


class PlayingKey(NamedTuple):
    """The server's number, what it types alone and with Shift, and its note in the chromatic scale."""

    code: int
    plain: str
    shifted: str
    note: int


def _row(first_code, first_note, plain, shifted):
    return [
        PlayingKey(first_code + place, *typed, first_note + place)
        for place, typed in enumerate(zip(plain, shifted, strict=True))
    ]


# By what they type alone; every row starts an octave above the one below it.
PLAYING_KEYS = {
    key.plain: key
    for key in (
        *_row(10, 84, "1234567890-=", "!@#$%^&*()_+"),
        *_row(24, 72, "qwertyuiop[]", "QWERTYUIOP{}"),
        *_row(38, 60, "asdfghjkl;'", 'ASDFGHJKL:"'),
        *_row(52, 48, "zxcvbnm,./", "ZXCVBNM<>?"),
    )
}

# The two places of the hotkey that the program has when it starts.
HOTKEYS = ("grave", "less")

OTHER_KEYS = {
    "grave": 49,
    "less": 94,
    "Escape": 9,
    "BackSpace": 22,
    "Tab": 23,
    "Return": 36,
    "space": 65,
    "backslash": 51,
    "Shift_L": 50,
    "Shift_R": 62,
    "Control_L": 37,
    "Alt_L": 64,
    "Super_L": 133,
    "Caps_Lock": 66,
    "Num_Lock": 77,
    "Scroll_Lock": 78,
    "F1": 67,
    "F4": 70,
    "F5": 71,
    "Up": 111,
    "Left": 113,
    "Right": 114,
    "Down": 116,
}

CODES = {name: key.code for name, key in PLAYING_KEYS.items()} | OTHER_KEYS
