"""The keyboard tap against a real X server, with a terminal in front that shows what it receives."""

import unittest

from harness.keyboard_tap import ALT, CONTROL, KEY_CODES, PLAIN, SHIFT, TapProbe, repeating_keys
from harness.sandbox import tool
from harness.tap_stage import A, HOTKEY, TapTest
from harness.waiting import wait_for


class SwallowingTest(TapTest):
    def test_swallowed_keys_do_not_reach_the_terminal_and_others_do(self):
        probe = self.start(play=1)
        self.display.tap("a", "Tab", "s", "l", "space", "1")
        probe.wait_for_downs("asl1")
        probe.wait_for_ups("asl1")
        self.terminal.wait_for(b"\t ")

    def test_nothing_is_taken_before_the_tap_is_switched_on_and_after_it_is_switched_off(self):
        probe = TapProbe(self.sandbox)
        probe.tell("play", 1)
        self.display.tap("a")
        self.terminal.wait_for(b"a")
        probe.set(enable=1)
        self.display.tap("a")
        self.terminal.wait_for(b"")
        probe.wait_for_downs("a")
        probe.wait_for_ups("a")
        probe.tell("enable", 0)
        self.wait_for_repeats_as_before()
        self.display.tap("a")
        self.terminal.wait_for(b"a")
        self.assertEqual(probe.downs(), [A])
        self.assertEqual(probe.ups(), [A])

    def test_disposed_tap_gives_everything_back_and_can_be_made_again(self):
        probe = self.start(play=1)
        self.assertNotEqual(repeating_keys(self.sandbox), self.repeats_before)
        probe.switch_off()
        self.assertEqual(repeating_keys(self.sandbox), self.repeats_before)
        self.display.tap("a")
        self.terminal.wait_for(b"a")
        self.assertEqual(probe.downs(), [])
        probe.tell("make")
        probe.set(enable=1)
        self.display.tap("a")
        probe.wait_for_downs("a")
        self.terminal.wait_for(b"")

    def test_foreign_keys_reach_the_terminal_while_playing_keys_are_held(self):
        probe = self.start(play=1)
        self.display.press("a", "s", "d", "f")
        self.display.tap("Tab", "space", "ctrl+c", "alt+space", "Up")
        self.display.release("s", "d", "f", "a")
        # The C is heard of as well: its press was not one to play, but its release might be.
        probe.wait_for_ups("csdfa")
        probe.wait_for_downs("asdf")
        self.terminal.wait_for(b"\t \x03\x1b \x1b[A")

    def test_shift_plays_and_other_modifiers_pass(self):
        probe = self.start(play=1)
        self.display.tap("shift+a", "ctrl+a", "alt+f", "ISO_Level3_Shift+a", "super+a", "shift+ctrl+s", "d")
        probe.wait_for_downs("ad")
        self.assertEqual(self.modifiers_of_downs(), [(A, SHIFT), (KEY_CODES["d"], PLAIN)])
        # AltGr and Super change nothing of what this layout types.
        self.terminal.wait_for(b"\x01\x1bfaa\x13")

    def test_caps_lock_and_num_lock_change_nothing(self):
        probe = self.start(play=1)
        for locks in (("Caps_Lock",), ("Num_Lock",), ("Caps_Lock",), ("Num_Lock",)):
            self.display.tap(*locks, "a", "shift+a")
        probe.wait_for_downs("aaaaaaaa")
        self.assertEqual(self.modifiers_of_downs(), [(A, PLAIN), (A, SHIFT)] * 4)
        self.terminal.wait_for(b"")

    def test_release_is_told_also_when_the_key_went_down_in_front(self):
        probe = self.start(play=1, front=1)
        self.display.press("a")
        probe.set(front=0)
        self.display.press("s")
        probe.set(front=1)
        self.display.release("a", "s")
        probe.wait_for_downs("s")
        probe.wait_for_ups("s")
        self.terminal.wait_for(b"a")

        probe.set(front=1)
        self.display.press("d")
        probe.set(front=0)
        self.display.release("d")
        probe.wait_for_ups("sd")
        self.terminal.wait_for(b"d")

    def test_press_whose_verdict_has_changed_meanwhile_is_replayed(self):
        probe = self.start(play=1, refuse=1)
        self.display.tap("a", "s", "Tab", "a")
        self.terminal.wait_for(b"as\ta")
        self.assertEqual(probe.downs(), [])
        self.assertEqual(len(probe.events("down")), 3)

    def test_held_key_is_one_press(self):
        self.display.let_keys_repeat()
        # That keys do repeat here, or the rest would show nothing.
        self.display.press("a")
        wait_for(lambda: self.terminal.received().startswith(b"aaaaa"), "repeats")
        self.display.release("a")
        self.display.tap("Return")
        wait_for(lambda: self.terminal.received().endswith(b"\r"), "the line break")
        self.terminal.forget()

        probe = self.start(play=1)
        # The key that was pressed last is the one that repeats, if it does at all. That the space goes on
        # measures the time in which the other key does not.
        self.display.press("space")
        wait_for(lambda: self.terminal.received().startswith(b"  "), "repeats of the space")
        self.display.press("a")
        spaces = self.terminal.received().count(b" ")
        wait_for(lambda: self.terminal.received().count(b" ") > spaces + 20, "more repeats of the space")
        # With Control it would no longer be a key to play, and its repeats would be the terminal's.
        self.display.press("Control_L")
        wait_for(lambda: self.terminal.received().count(b"\0") > 20, "repeats of Control with the space")
        self.display.release("Control_L", "a", "space")
        probe.wait_for_ups("a")
        self.assertEqual([line["down"] for line in probe.events("down")], [A])
        self.assertEqual(set(self.terminal.received()), set(b" \0"))

    def test_repeats_that_come_all_the_same_are_told_as_such(self):
        probe = self.start(play=0, hotkey=HOTKEY)
        self.display.let_keys_repeat()
        self.display.press("F9")
        wait_for(lambda: len(probe.events("down")) > 3, "repeats of the hotkey")
        self.display.release("F9")
        probe.wait_for_ups(["F9"])
        downs = probe.events("down")
        self.assertEqual([line["down"] for line in downs], [KEY_CODES["F9"]] * len(downs))
        self.assertEqual([line["isAutorepeat"] for line in downs], [False] + [True] * (len(downs) - 1))
        self.assertTrue(all(line["isSwallowed"] for line in downs))
        self.terminal.wait_for(b"")


class MappingTest(TapTest):
    """The layout and the modifiers of the display change while the tap is on."""

    def do(self, name, *arguments):
        done = self.sandbox.run(tool(name), *arguments)
        self.assertEqual(done.returncode, 0, done.stderr)

    def test_places_count_in_every_layout(self):
        probe = self.start(play=1)
        for layout, typed in (("fr", b"*"), ("de", b"#"), ("us", b"\\")):
            self.do("setxkbmap", "-layout", layout)
            # Where the modifiers move, the tap lets all keys go and takes them anew; the server tells of a new
            # layout up to three times.
            for _ in range(4):
                probe.set()
            # The server's numbers of the places of A and Q, and of one that is not played.
            self.display.tap("38", "24", "51")
            self.terminal.wait_for(typed)
        probe.wait_for_downs("aqaqaq")
        probe.wait_for_ups("aqaqaq")

    def test_num_lock_that_moves_to_another_modifier(self):
        probe = self.start(play=1)
        self.do("xmodmap", "-e", "remove Mod2 = Num_Lock", "-e", "add Mod3 = Num_Lock")
        self.display.tap("Num_Lock")

        def plays():
            # What comes before the tap has heard of the change is the terminal's.
            count = len(probe.downs())
            self.display.tap("a", "Return")
            wait_for(lambda: self.terminal.received().endswith(b"\r"), "the line break")
            self.terminal.forget()
            return len(probe.downs()) > count

        wait_for(plays, "a key that plays with the moved Num Lock")
        self.display.tap("s", "shift+s", "Num_Lock", "d", "ctrl+d")
        wait_for(lambda: KEY_CODES["d"] in probe.downs(), "the last key")
        self.assertEqual(probe.downs()[-3:], [KEY_CODES["s"], KEY_CODES["s"], KEY_CODES["d"]])
        self.terminal.wait_for(b"\x04")


class HotkeyTest(TapTest):
    def test_keys_right_behind_the_hotkey_follow_the_new_state(self):
        probe = self.start(hotkey=HOTKEY)
        # By one program in one go, so that they come as fast as the server takes them.
        burst = ["a", "F9", "a", "s", "F9", "d", "F9", "f", "F9", "g"]
        for _ in range(10):
            self.display.at_once("key", "--delay", "0", *burst)
        probe.wait_for_ups((["F9", "a", "s", "F9", "F9", "f", "F9"]) * 10)
        probe.wait_for_downs((["F9", "a", "s", "F9", "F9", "f", "F9"]) * 10)
        self.terminal.wait_for(b"adg" * 10)

    def test_hotkey_needs_exactly_its_modifiers(self):
        probe = self.start(hotkey=(KEY_CODES["q"], CONTROL | SHIFT))
        self.display.tap("q", "ctrl+q", "a", "ctrl+shift+q", "a", "q", "ctrl+shift+q", "a")
        probe.wait_for_downs("qaqq")
        self.assertEqual([line["down"] for line in probe.events("down") if line["isHotkey"]], [KEY_CODES["q"]] * 2)
        self.terminal.wait_for(b"q\x11aa")

    def test_hotkey_with_alt_counts_alt_gr_too(self):
        probe = self.start(hotkey=(KEY_CODES["w"], ALT))
        self.display.tap("alt+w", "a", "ISO_Level3_Shift+w", "a")
        probe.wait_for_downs("waw")
        self.terminal.wait_for(b"a")

    def test_playing_key_as_the_hotkey(self):
        probe = self.start(hotkey=(A, PLAIN))
        self.display.tap("s", "a", "s", "shift+a", "a", "s")
        probe.wait_for_downs("asaa")
        self.assertEqual(
            [line["isHotkey"] for line in probe.events("down")], [True, False, False, True]
        )
        self.terminal.wait_for(b"ss")


class SharingTest(TapTest):
    def bind(self, key, also=""):
        """Has the window manager take the key and no other."""
        settings = self.sandbox.folder / "openbox.xml"
        command = f'sh -c "echo {key} &gt;&gt; {self.sandbox.folder / "bound"}"'
        action = f'<action name="Execute"><command>{command}</command></action>'
        before, rest = settings.read_text().split("<keyboard>")
        binding = f'<keyboard><keybind key="{key}">{action}{also}</keybind></keyboard>'
        settings.write_text(before + binding + rest.split("</keyboard>")[1])
        self.sandbox.run(tool("openbox"), "--reconfigure")

    def bound(self):
        file = self.sandbox.folder / "bound"
        return file.read_text().split() if file.exists() else []

    def wait_for_bound(self, key):
        def look():
            count = self.bound().count(key)
            self.display.tap(key)
            wait_for(lambda: self.bound().count(key) > count or self.terminal.received(), "the key to act")
            self.terminal.forget()
            return self.bound().count(key) > count

        wait_for(look, f"the window manager to take {key}")

    def test_key_of_another_program_is_reported_and_left_to_it(self):
        self.bind("s")
        self.wait_for_bound("s")
        probe = self.start(play=1, hotkey=HOTKEY)
        self.assertEqual(probe.answers("taken"), [[[KEY_CODES["s"], PLAIN]]])
        count = len(self.bound())
        self.display.tap("a", "s", "d")
        probe.wait_for_downs("ad")
        wait_for(lambda: len(self.bound()) == count + 1, "the key at the window manager")
        self.display.tap("shift+s")
        probe.wait_for_downs("ads")
        self.terminal.wait_for(b"")

        # It is asked again with the next change, and told once.
        probe.set(play=1)
        self.assertEqual(len(probe.answers("taken")), 1)
        self.bind("F12")
        self.wait_for_bound("F12")
        probe.set(play=1)
        self.assertEqual(probe.answers("taken")[1:], [[]])
        self.display.tap("s")
        probe.wait_for_downs("adss")
        self.terminal.wait_for(b"")

    def test_keys_under_the_grab_of_another_program_are_its_own(self):
        self.bind("F12", '<action name="ShowMenu"><menu>client-menu</menu></action>')
        self.wait_for_bound("F12")
        self.display.tap("Escape")
        probe = self.start(play=1)
        self.display.tap("F12")

        def is_under_grab():
            downs, ups = len(probe.downs()), len(probe.ups())
            self.display.tap("1")
            wait_for(lambda: len(probe.ups()) > ups, "the release")
            return len(probe.downs()) == downs

        wait_for(is_under_grab, "the menu to take the keys")
        downs = len(probe.downs())
        self.display.tap("1", "1", "1", "Escape")
        wait_for(lambda: not is_under_grab(), "the end of the menu")
        self.assertEqual(len(probe.downs()), downs + 1)

    def test_keys_of_a_second_tap_are_reported(self):
        first = self.start(play=1)
        second = TapProbe(self.sandbox)
        second.set(enable=1, hotkey=HOTKEY)
        self.assertEqual(second.answers("taken"), [])
        second.set(play=1)
        taken = second.answers("taken")[-1]
        self.assertEqual(len(taken), 2 * 45)
        self.assertIn([A, PLAIN], taken)
        self.display.tap("a")
        first.wait_for_downs("a")
        self.assertEqual(second.downs(), [])
        first.switch_off()
        second.set(play=1)
        self.assertEqual(second.answers("taken")[-1], [])
        self.display.tap("a")
        second.wait_for_downs("a")
        self.terminal.wait_for(b"")


if __name__ == "__main__":
    unittest.main()
