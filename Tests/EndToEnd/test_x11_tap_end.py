"""The keyboard tap comes to its end, by every way: the keyboard types and repeats as before."""

import os
import pathlib
import signal
import unittest

from harness.keyboard_tap import KEY_CODES, TapProbe, repeating_keys
from harness.sandbox import tool
from harness.tap_stage import HOTKEY, TapTest
from harness.waiting import wait_for


class EndTest(TapTest):
    def assert_keyboard_works(self):
        self.wait_for_repeats_as_before()
        self.display.tap("a", "shift+s", "d")
        self.terminal.wait_for(b"aSd")
        self.display.let_keys_repeat()
        self.display.press("a")
        wait_for(lambda: self.terminal.received().startswith(b"aaa"), "repeats")
        self.display.release("a")
        self.display.keep_keys_from_repeating()

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
        # For a moment that the guard would not notice, however long it takes here.
        (guard,) = self.guards()
        os.kill(guard, signal.SIGSTOP)
        probe.program.process.send_signal(signal.SIGSTOP)
        self.display.tap("a", "Tab", "s", "space", "F9", "d", "F9", "f")
        probe.program.process.send_signal(signal.SIGCONT)
        wanted = [("down", "a"), ("up", "a"), ("down", "s"), ("up", "s"), ("down", "F9"), ("up", "F9")]
        wanted += [("down", "F9"), ("up", "F9"), ("down", "f"), ("up", "f")]
        wait_for(lambda: len(probe.events("down", "up")) >= len(wanted), "the keys that waited")
        told = [(kind, line[kind]) for line in probe.events("down", "up") for kind in ("down", "up") if kind in line]
        self.assertEqual(told, [(kind, KEY_CODES[key]) for kind, key in wanted])
        self.terminal.wait_for(b"\t d")
        os.kill(guard, signal.SIGCONT)

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
        wait_for(lambda: len(self.guards()) == 1, "another guard")
        self.assertEqual(probe.program.errors(), "")
        probe.program.process.kill()
        self.assert_keyboard_works()

    def test_guard_ends_with_the_program(self):
        probe = self.start(play=1)
        (guard,) = self.guards()
        probe.switch_off()
        self.assertEqual(self.guards(), [guard])
        probe.program.end()
        self.assertFalse(pathlib.Path(f"/proc/{guard}").exists())
        self.wait_for_repeats_as_before()

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
