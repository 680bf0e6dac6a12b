"""Keys and clicks that follow each other so closely that the program gets them together."""

import os
import re
import signal
import unittest

from harness.sandbox import tool
from harness.stage import StageTest
from harness.waiting import wait_for

ROUNDS = 20
MANY_ROUNDS = 100


class OrderTest(StageTest):
    def setUp(self):
        super().setUp()
        self._clicks = 0
        self.play({"humanizeVelocity": 0})

    def click(self, name):
        x, y = self.application.surface.place(name)
        # Elsewhere each time, so that two of them never make a double click.
        self._clicks = (self._clicks + 1) % 3
        return ["mousemove", "--window", self.application.window, x + 16 * (self._clicks - 1), y, "click", "1"]

    def inject(self, number, *words):
        """In every second round the program is kept from reading until everything is there."""
        if number % 2 == 0:
            self.display.at_once(*words)
            return
        os.kill(self.application.program.pid, signal.SIGSTOP)
        try:
            self.display.at_once(*words)
        finally:
            os.kill(self.application.program.pid, signal.SIGCONT)

    def assert_plays_after_each_round(self, words_of, messages_of, rounds=ROUNDS):
        expected = []
        for number in range(rounds):
            velocity = 40 + number % 20
            self.inject(number, *words_of(velocity))
            expected += messages_of(velocity)
            messages = self.recorder.wait_for_messages(len(expected))
            # A shorter expectation leaves the velocity open.
            self.assertEqual([one[: len(e)] for one, e in zip(messages, expected)], expected)
            self.assertEqual(len(messages), len(expected), messages)

    def test_digits_behind_a_click_go_into_the_field_and_the_key_behind_return_plays(self):
        self.assert_plays_after_each_round(
            lambda velocity: [
                *self.click("velocity"),
                *["key", "--delay", "0", *str(velocity), "Return", "a"],
            ],
            lambda velocity: [[0x90, 60, velocity], [0x80, 60, 0]],
            rounds=MANY_ROUNDS,
        )

    def test_a_key_behind_a_click_beside_the_field_plays_with_what_was_typed(self):
        self.assert_plays_after_each_round(
            lambda velocity: [
                *self.click("velocity"),
                *["key", "--delay", "0", *str(velocity)],
                *self.click("beside everything"),
                *["key", "--delay", "0", "a"],
            ],
            lambda velocity: [[0x90, 60, velocity], [0x80, 60, 0]],
        )

    def test_keys_while_a_list_is_open_play_nothing(self):
        self.assert_plays_after_each_round(
            lambda velocity: [
                *self.click("root"),
                *["key", "--delay", "0", "a", "d", "Escape", "s"],
            ],
            lambda velocity: [[0x90, 61, 100], [0x80, 61, 0]],
        )

    def test_a_key_held_while_a_field_gets_the_keyboard_ends_its_note(self):
        self.assert_plays_after_each_round(
            lambda velocity: [
                *["keydown", "a"],
                *self.click("velocity"),
                *["keyup", "a"],
                *["key", "--delay", "0", *str(velocity), "Return", "s"],
            ],
            lambda velocity: [[0x90, 60], [0x80, 60, 0], [0x90, 61, velocity], [0x80, 61, 0]],
        )

    def test_control_pressed_and_released_among_keys_leaves_no_note(self):
        self.assert_plays_after_each_round(
            lambda velocity: ["keydown", "a", "keydown", "Control_L", "keydown", "d", "keyup", "a"]
            + ["keyup", "d", "keyup", "Control_L", "key", "--delay", "0", "s"],
            lambda velocity: [[0x90, 60, 100], [0x80, 60, 0], [0x90, 61, 100], [0x80, 61, 0]],
        )


class UserTimeTest(StageTest):
    def test_playing_tells_the_window_manager_that_the_user_is_there(self):
        self.play()
        before = self.user_time()
        for _ in range(3):
            self.display.tap("a")
            wait_for(lambda: self.user_time() not in (None, before), "a later time of the user's last action")
            before = self.user_time()

    def user_time(self):
        window = self._property(self.application.window, "_NET_WM_USER_TIME_WINDOW", r"(0x[0-9a-f]+)")
        return self._property(window or self.application.window, "_NET_WM_USER_TIME", r"= (\d+)")

    def _property(self, window, name, pattern):
        text = self.sandbox.run(tool("xprop"), "-id", window, name).stdout
        found = re.search(pattern, text)
        return found.group(1) if found else None


if __name__ == "__main__":
    unittest.main()
