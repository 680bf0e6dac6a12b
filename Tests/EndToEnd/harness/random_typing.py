import time

from .keys import HOTKEYS, PLAYING_KEYS

NOTE_ON, NOTE_OFF = 0x90, 0x80
VELOCITY = 100

FOREIGN_KEYS = {
    "Return": b"\r",
    "Tab": b"\t",
    "space": b" ",
    "Up": b"\x1b[A",
    "Left": b"\x1b[D",
    "F1": b"\x1bOP",
}
SHIFTED_HOTKEYS = {"grave": b"~", "less": b">"}
SHIFT = "Shift_L"
# At most one of them is held at a time.
SHORTCUT_MODIFIERS = ("Control_L", "Alt_L", "Super_L")


class RandomTyping:
    """Types at random, and knows what of it must be played and what typed.

    A keyboard has no second press of a key that is down, so neither has this.
    """

    MOST_HELD_KEYS = 8

    def __init__(self, random, typist, is_on):
        self.is_on = is_on
        # What is expected: the bytes of a terminal, and MIDI messages. The spans of the messages that come in
        # an order of their own: the ends of all notes that sound when Global Play is turned off.
        self.typed = bytearray()
        self.messages = []
        self.unordered_spans = []
        self.events = 0
        self.counts = dict.fromkeys(("played", "typed", "foreign", "toggles", "cut off"), 0)
        self._random = random
        self._typist = typist
        # The keys that are down, and of those that play the ones that sound.
        self._held = []
        self._sounding = []
        self._modifiers = set()

    def step(self):
        """Presses or releases a key, or types a combination; then a pause, as often as not none at all."""
        choice = self._random.random()
        if choice < 0.03:
            self._press_hotkey()
        elif choice < 0.05 or (choice < 0.15 and self._modifiers):
            self._change_modifier()
        elif choice < 0.21:
            self._press_foreign_key()
        elif choice < 0.25:
            self._type_shortcut()
        elif len(self._held) < self._random.randint(1, self.MOST_HELD_KEYS):
            self._press_playing_key(self._random.choice(list(PLAYING_KEYS)))
        else:
            self._release(self._random.choice(self._held))
        pause = self._random.random()
        if pause > 0.5:
            time.sleep(self._random.uniform(0, 0.002 if pause < 0.9 else 0.012))

    def release_all(self):
        while self._held:
            self._release(self._random.choice(self._held))
        for modifier in sorted(self._modifiers):
            self._set_modifier(modifier, False)

    def end_round(self):
        """Everything is let go, and the terminal is in front."""
        self.release_all()

    def play(self, key):
        """Taps a playing key; Global Play is turned on for it if need be."""
        if not self.is_on:
            self._press_hotkey()
        self._press_playing_key(key)
        self.release_all()

    def _send(self, key, is_press):
        self._typist.send(key, is_press)
        self.events += 1

    def _press(self, key):
        self._held.append(key)
        self._send(key, True)

    def _release(self, key):
        self._held.remove(key)
        self._send(key, False)
        if key in self._sounding:
            self._sounding.remove(key)
            self._end_note(key)

    def _begin_note(self, key):
        self.messages.append([NOTE_ON, PLAYING_KEYS[key].note, VELOCITY])
        self._sounding.append(key)
        self.counts["played"] += 1

    def _end_note(self, key):
        self.messages.append([NOTE_OFF, PLAYING_KEYS[key].note, 0])

    def _shortcut_modifier(self):
        return next((key for key in SHORTCUT_MODIFIERS if key in self._modifiers), None)

    def _set_modifier(self, modifier, is_held):
        self._send(modifier, is_held)
        (self._modifiers.add if is_held else self._modifiers.remove)(modifier)

    def _change_modifier(self):
        # Rather let go than held, or little would be played.
        modifier = self._random.choice([*SHORTCUT_MODIFIERS, SHIFT, SHIFT, *sorted(self._modifiers) * 4])
        if modifier in self._modifiers:
            self._set_modifier(modifier, False)
        elif modifier == SHIFT or not self._shortcut_modifier():
            self._set_modifier(modifier, True)

    def _type_shortcut(self):
        if not self._shortcut_modifier():
            modifier = self._random.choice(SHORTCUT_MODIFIERS)
            self._set_modifier(modifier, True)
            self._press_playing_key(self._random.choice("acvxz"))
            self._set_modifier(modifier, False)

    def _press_foreign_key(self):
        key = self._random.choice(list(FOREIGN_KEYS))
        if not self._modifiers and key not in self._held:
            self._press(key)
            self.typed += FOREIGN_KEYS[key]
            self.counts["foreign"] += 1

    def _press_hotkey(self):
        key = self._random.choice(HOTKEYS)
        if self._shortcut_modifier() or key in self._held:
            return
        self._press(key)
        if SHIFT in self._modifiers:
            self.typed += SHIFTED_HOTKEYS[key]
            self.counts["foreign"] += 1
            return
        self._toggle()

    def _toggle(self):
        self.counts["toggles"] += 1
        self.is_on = not self.is_on
        if not self.is_on:
            begin = len(self.messages)
            self.counts["cut off"] += len(self._sounding)
            for sounding in self._sounding:
                self._end_note(sounding)
            self._sounding.clear()
            self.unordered_spans.append((begin, len(self.messages)))

    def _press_playing_key(self, key):
        modifier = self._shortcut_modifier()
        # With Control, the terminal makes something of its own of a figure or a sign.
        if key in self._held or (modifier == "Control_L" and not key.isalpha()):
            return
        self._press(key)
        if self.is_on and not modifier:
            self._begin_note(key)
        else:
            self.typed += self._typed_by(key, modifier)
            self.counts["typed"] += 1

    def _typed_by(self, key, modifier):
        if modifier == "Control_L":
            return bytes([ord(key) & 0x1F])
        text = PLAYING_KEYS[key].shifted if SHIFT in self._modifiers else key
        return (b"\x1b" if modifier == "Alt_L" else b"") + text.encode()
