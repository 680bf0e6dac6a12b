"""The keyboard tap against a real X server, with a terminal in front that shows what it receives."""

import os
import pathlib
import random
import signal
import unittest

from harness.display import Display
from harness.keyboard_tap import ALT, CONTROL, KEY_CODES, PLAIN, SHIFT, TapProbe, TapTerminal, repeating_keys
from harness.sandbox import tool
from harness.testcase import EndToEndTest
from harness.waiting import wait_for

A = KEY_CODES["a"]
HOTKEY = (KEY_CODES["F9"], PLAIN)


class TapTest(EndToEndTest):
    def setUp(self):
        super().setUp()
        self.display = Display(self.sandbox)
        self.terminal = TapTerminal(self.sandbox, self.display)
        self.repeats_before = repeating_keys(self.sandbox)

    def start(self, **values):
        """A tap that is switched on and has taken over the values."""
        self.probe = TapProbe(self.sandbox)
        self.assertTrue(self.probe.creations["made"])
        self.probe.set(enable=1, **values)
        return self.probe

    def modifiers_of_downs(self):
        return [(line["down"], line["modifiers"]) for line in self.probe.events("down")]

    def wait_for_repeats_as_before(self):
        wait_for(
            lambda: repeating_keys(self.sandbox) == self.repeats_before,
            lambda: f"the repeats {self.repeats_before}; they are {repeating_keys(self.sandbox)}",
        )


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


class StressTest(TapTest):
    # What each key types in the terminal.
    LETTERS = {key: key.encode() for key in "asdfgcqwl1"}
    FOREIGN = {"Tab": b"\t", "space": b" ", "Up": b"\x1b[A", "Return": b"\r", "F1": b"\x1bOP"}
    EVENTS = 2000

    def setUp(self):
        super().setUp()
        self.random = random.Random(4711)
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


class EndTest(TapTest):
    def assert_keyboard_works(self):
        self.wait_for_repeats_as_before()
        self.display.tap("a", "shift+s", "d")
        self.terminal.wait_for(b"aSd")
        self.display.press("a")
        wait_for(lambda: self.terminal.received().startswith(b"aaa"), "repeats")
        self.display.release("a")

    def test_emergency_exit(self):
        for last in ("Escape", "Shift_R"):
            with self.subTest(last=last):
                probe = self.start(play=1, hotkey=HOTKEY)
                others = [key for key in ("Shift_L", "Shift_R", "Escape") if key != last]
                self.display.press("a", *others)
                self.assertEqual(probe.answers("ended"), [])
                self.display.press(last)
                wait_for(lambda: probe.answers("ended"), "the end of the tap")
                self.display.release("Escape", "Shift_L", "Shift_R", "a")
                self.assertEqual(probe.answers("ended"), ["emergencyExit"])
                self.display.tap("Return")
                wait_for(lambda: self.terminal.received().endswith(b"\r"), "the line break")
                self.terminal.forget()
                told = len(probe.events("down", "up"))
                self.assert_keyboard_works()
                self.display.tap("F9", "Return")
                self.assertEqual(len(probe.events("down", "up")), told)
                probe.program.end()
                self.terminal.forget()

    def test_only_the_flags_that_were_set_are_set_again(self):
        # 38 and 39 are the server's numbers of A and S.
        self.sandbox.run(tool("xset"), "-r", "39")
        before = repeating_keys(self.sandbox)
        self.assertNotEqual(before, self.repeats_before)
        self.repeats_before = before
        probe = self.start(play=1)
        self.assertNotEqual(repeating_keys(self.sandbox), before)
        probe.program.process.send_signal(signal.SIGKILL)
        self.wait_for_repeats_as_before()
        self.start(play=1).switch_off()
        self.assertEqual(repeating_keys(self.sandbox), before)

    def test_killed_program(self):
        probe = self.start(play=1)
        self.display.press("s")
        probe.wait_for_downs("s")
        probe.program.process.kill()
        self.display.release("s")
        self.assert_keyboard_works()

    def test_stopped_and_then_killed_program(self):
        probe = self.start(play=1)
        probe.program.process.send_signal(signal.SIGSTOP)
        self.display.tap("a", "Tab", "a", "space")
        probe.program.process.kill()
        # The keys to play may have gone with the program; no other may.
        wait_for(lambda: self.terminal.received().endswith(b" "), "the keys that waited")
        self.assertEqual(self.terminal.received().replace(b"a", b""), b"\t ")
        self.terminal.forget()
        self.assert_keyboard_works()

    def test_stopped_program_that_goes_on_has_missed_nothing(self):
        probe = self.start(play=1, hotkey=HOTKEY)
        probe.program.process.send_signal(signal.SIGSTOP)
        self.display.tap("a", "Tab", "s", "space", "F9", "d", "F9", "f")
        probe.program.process.send_signal(signal.SIGCONT)
        wanted = [("down", "a"), ("up", "a"), ("down", "s"), ("up", "s"), ("down", "F9"), ("up", "F9")]
        wanted += [("down", "F9"), ("up", "F9"), ("down", "f"), ("up", "f")]
        wait_for(lambda: len(probe.events("down", "up")) >= len(wanted), "the keys that waited")
        told = [(kind, line[kind]) for line in probe.events("down", "up") for kind in ("down", "up") if kind in line]
        self.assertEqual(told, [(kind, KEY_CODES[key]) for kind, key in wanted])
        self.terminal.wait_for(b"\t d")

    def test_killed_process_group(self):
        probe = TapProbe(self.sandbox, wrapper=[tool("setsid")])
        probe.set(enable=1, play=1)
        self.assertNotEqual(repeating_keys(self.sandbox), self.repeats_before)
        os.killpg(probe.program.pid, signal.SIGKILL)
        self.assert_keyboard_works()

    def guards(self):
        """The process ids of the programs that were started by the probe."""
        found = []
        for folder in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                status = (folder / "stat").read_text()
            except OSError:
                continue
            state, parent = status.rsplit(")", 1)[1].split()[:2]
            if int(parent) == self.probe.program.pid and state != "Z":
                found.append(int(folder.name))
        return found

    def test_guard_that_was_ended_is_replaced(self):
        probe = self.start(play=1)
        (first,) = self.guards()
        os.kill(first, signal.SIGKILL)
        wait_for(lambda: not self.guards(), "the end of the guard")
        probe.set(play=0)
        probe.set(play=1)
        self.assertEqual(len(self.guards()), 1)
        self.assertEqual(probe.program.errors(), "")
        probe.program.process.kill()
        self.assert_keyboard_works()

    def test_guard_ends_with_the_tap(self):
        probe = self.start(play=1)
        self.assertEqual(len(self.guards()), 1)
        probe.switch_off()
        self.assertEqual(self.guards(), [])

    def test_signals_to_the_process_group_leave_the_guard_to_its_work(self):
        probe = TapProbe(self.sandbox, wrapper=[tool("setsid")])
        probe.set(enable=1, play=1)
        for number in (signal.SIGINT, signal.SIGHUP, signal.SIGTERM):
            os.killpg(probe.program.pid, number)
        probe.program.wait_for_end()
        self.assert_keyboard_works()

    def test_without_a_guard_the_tap_works_and_says_what_is_missing(self):
        probe = TapProbe(self.sandbox, guard=str(self.sandbox.folder / "no-such-program"))
        probe.set(enable=1, play=1)
        self.display.tap("a")
        probe.wait_for_downs("a")
        probe.set(play=0)
        probe.set(play=1)
        probe.switch_off()
        self.assertEqual(probe.program.errors().count("no-such-program cannot be started"), 1)
        self.assert_keyboard_works()

    def test_display_that_goes_away(self):
        probe = self.start(play=1)
        self.display_server().process.kill()
        wait_for(lambda: probe.answers("ended"), "the end of the tap")
        self.assertEqual(probe.answers("ended"), ["lost"])
        probe.switch_off()
        probe.program.process.stdin.close()
        self.assertEqual(probe.program.wait_for_end(), 0)

    def display_server(self):
        return next(program for program in self.sandbox._programs if program.name == "Xvfb")

    def test_without_a_display_no_tap_is_made(self):
        self.sandbox.environment["DISPLAY"] = str(self.sandbox.folder / "nowhere")
        self.assertFalse(TapProbe(self.sandbox).creations["made"])


if __name__ == "__main__":
    unittest.main()
