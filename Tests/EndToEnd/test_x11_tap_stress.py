"""The keyboard tap under many keys at once: each is played or typed, exactly once."""

import random
import unittest

from harness.keyboard_tap import KEY_CODES
from harness.tap_stage import HOTKEY, TapTest
from harness.waiting import wait_for
from seeds import seed

SEED = 4711


class StressTest(TapTest):
    # What each key types in the terminal.
    LETTERS = {key: key.encode() for key in "asdfgcqwl1"}
    FOREIGN = {"Tab": b"\t", "space": b" ", "Up": b"\x1b[A", "Return": b"\r", "F1": b"\x1bOP"}
    EVENTS = 2000

    def setUp(self):
        super().setUp()
        self.random = random.Random(seed(SEED))
        self.lines = []
        self.typed = b""
        self.downs = []
        self.ups = []
        self.held = []
        self.is_playing = False
        self.count = 0

    def do(self, kind, key):
        self.lines.append(f"{kind} --delay 0 {key}")
        self.count += 1

    def release(self, key):
        self.held.remove(key)
        self.do("keyup", key)
        self.ups.append(key)

    def press_and_hold(self, key):
        self.held.append(key)
        self.do("keydown", key)
        self.downs.append(key)

    def tap(self, key):
        self.do("keydown", key)
        self.do("keyup", key)

    def tap_letter(self, key, modifier=None):
        if modifier:
            self.do("keydown", modifier)
        self.tap(key)
        if modifier:
            self.do("keyup", modifier)
        is_played = self.is_playing and modifier in (None, "Shift_L")
        if is_played:
            self.downs.append(key)
        elif modifier == "Control_L":
            self.typed += bytes([ord(key) & 0x1F])
        else:
            self.typed += {None: key, "Shift_L": key.upper(), "Alt_L": "\x1b" + key}[modifier].encode()
        if self.is_playing:
            self.ups.append(key)

    def toggle(self):
        for key in list(self.held):
            self.release(key)
        self.tap("F9")
        self.downs.append("F9")
        self.ups.append("F9")
        self.is_playing = not self.is_playing

    def add_one(self):
        free = [key for key in self.LETTERS if key not in self.held]
        choice = self.random.random()
        if choice < 0.04:
            self.toggle()
        elif choice < 0.24 and self.held:
            self.release(self.random.choice(self.held))
        elif choice < 0.50 and self.is_playing and len(self.held) < 4:
            self.press_and_hold(self.random.choice(free))
        elif choice < 0.70:
            key = self.random.choice(list(self.FOREIGN))
            self.tap(key)
            self.typed += self.FOREIGN[key]
        else:
            # The figure is no letter; with a modifier it would type something of its own.
            modifier = self.random.choice([None, None, "Shift_L", "Control_L", "Alt_L"])
            self.tap_letter(self.random.choice([key for key in free if key != "1"]), modifier)

    def test_every_key_is_played_or_typed_exactly_once(self):
        probe = self.start(hotkey=HOTKEY)
        while self.count < self.EVENTS:
            self.add_one()
        for key in list(self.held):
            self.release(key)
        script = self.sandbox.folder / "keys"
        for begin in range(0, len(self.lines), 100):
            script.write_text("\n".join(self.lines[begin : begin + 100]) + "\n")
            self.display.at_once(script)
        probe.wait_for_downs(self.downs)
        probe.wait_for_ups(self.ups)
        self.terminal.wait_for(self.typed)
        self.assertTrue(all(not line["isAutorepeat"] for line in probe.events("down")))

    def test_verdicts_that_change_all_the_time(self):
        probe = self.start(play=1)
        letters = list("asdfgcqwl")
        script = self.sandbox.folder / "keys"
        probe.tell("churn", 3000)
        pressed = []
        while not probe.answers("churned"):
            keys = self.random.choices(letters, k=50)
            script.write_text("".join(f"keydown --delay 0 {key}\nkeyup --delay 0 {key}\n" for key in keys))
            self.display.at_once(script)
            pressed += keys
        self.display.tap("Return")
        wait_for(lambda: self.terminal.received().endswith(b"\r"), "the line break")
        typed = self.terminal.received().decode()[:-1]
        downs = probe.downs()
        for key in letters:
            played = downs.count(KEY_CODES[key])
            self.assertEqual(played + typed.count(key), pressed.count(key), f"{key}, {played} of it played")
            self.assertGreaterEqual(probe.ups().count(KEY_CODES[key]), played)
        # Both have happened, or nothing was shown.
        self.assertGreater(len(downs), 0)
        self.assertGreater(len(typed), 0)


if __name__ == "__main__":
    unittest.main()
