import time

from .application import Application
from .keyboard_tap import repeating_keys
from .keys import PLAYING_KEYS
from .stage import StageTest
from .terminal import Terminal
from .waiting import wait_for
from .x_client import Typist

MANY_REPEATS = 20
ON, READY, OFF = "Global Play on", "Global Play ready", "Global Play off"


class GlobalPlayTest(StageTest):
    """A terminal, in front of the program for most of the time."""

    def setUp(self):
        super().setUp()
        self.terminal = Terminal(self.sandbox, self.display)
        self.repeats_before = repeating_keys(self.sandbox)
        self.typist = self.client(Typist)
        self.expected = []

    def client(self, kind):
        made = kind(self.sandbox)
        self.addCleanup(made.close)
        return made

    def play(self, state=None, wrapper=()):
        self.application = Application(self.sandbox, self.display, state, wrapper)
        self.recorder.wait_for_connection()

    def play_behind_the_terminal(self, state=None, wrapper=()):
        """The program plays, turned on by the hotkey in its own window, and the terminal is in front."""
        self.play(state, wrapper)
        self.typist.tap("grave")
        self.application.wait_for_global_play(ON)
        self.show_terminal()

    def show_terminal(self):
        self.display.activate(self.terminal.window)
        self.wait_until_captured()

    def show_application(self):
        self.display.activate(self.application.window)
        self.wait_until_released()

    def wait_until_captured(self):
        """The keys that are played do not repeat: seen from outside, this tells that they are taken."""
        wait_for(lambda: repeating_keys(self.sandbox) != self.repeats_before, "the capture")

    def wait_until_released(self):
        wait_for(
            lambda: repeating_keys(self.sandbox) == self.repeats_before,
            lambda: f"the repeats {self.repeats_before}; they are {repeating_keys(self.sandbox)}",
        )

    def wait_for_repeats(self, keys):
        """Waits until of the playing keys just these repeat."""
        wait_for(lambda: self.repeating() == keys, lambda: f"repeats of {keys}; there are {self.repeating()}")

    def repeating(self):
        flags = bytes.fromhex(repeating_keys(self.sandbox))
        return {name for name, key in PLAYING_KEYS.items() if flags[key.code // 8] >> key.code % 8 & 1}

    def hold_over_spaces(self, *keys):
        """Presses keys that do not repeat and waits for as long as many repeats take:
        the key that was pressed last is the one that repeats, if it does at all, so that the space, which is held
        already and repeats into the terminal, goes on."""
        self.typist.press(*keys)
        before = self._spaces()
        wait_for(lambda: self._spaces() > before + MANY_REPEATS, "the space to go on repeating")

    def _spaces(self):
        # With Control it types a zero.
        received = self.terminal.received()
        return received.count(b" ") + received.count(b"\0")

    def press_space(self):
        """Holds the space until it repeats."""
        self.display.let_keys_repeat()
        self.typist.press("space")
        wait_for(lambda: self._spaces() > 1, "repeats of the space")

    def assert_typed_besides_spaces(self, wanted):
        """Lets the space go, and compares what the terminal has received else since the last time."""
        self.typist.release("space")
        self.assertEqual(self.forget_typed().replace(b" ", b"").replace(b"\0", b""), wanted + b"\r")

    def play_for(self, seconds, key):
        """Plays a key over and over: what was due in that time has been done before the last one sounds."""
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            self.typist.tap(key)
            self.assert_played(key)

    def assert_played(self, *taps, on="", off=""):
        """Waits for the notes of the taps, or of the presses, then the releases, and compares all so far."""
        notes = [PLAYING_KEYS[key].note for key in taps]
        self.expected += [(state, note) for note in notes for state in ("on", "off")]
        self.expected += [("on", PLAYING_KEYS[key].note) for key in on]
        self.expected += [("off", PLAYING_KEYS[key].note) for key in off]
        self.assert_notes(self.expected)

    def forget_typed(self):
        """Returns what the terminal has received since the last time, which must not contain line breaks."""
        self.typist.tap("Return")
        wait_for(lambda: self.terminal.received().endswith(b"\r"), "the line break")
        typed = self.terminal.received()
        self.terminal.forget()
        return typed

    def assert_typed(self, wanted):
        """Types a line break behind what the terminal has received, and compares all since the last time."""
        wanted += b"\r"
        self.typist.tap("Return")
        wait_for(
            lambda: len(self.terminal.received()) >= len(wanted),
            lambda: f"{wanted!r} in the terminal; there is {self.terminal.received()!r}",
        )
        self.assertEqual(self.terminal.received(), wanted)
        self.terminal.forget()
