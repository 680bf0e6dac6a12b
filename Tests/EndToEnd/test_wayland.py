"""The program in a Wayland session that has no X server to fall back on."""

import json
import unittest

from harness.application import STATUS, TITLE
from harness.jack_server import JackServer, isolate_from_servers
from harness.recorder import Recorder
from harness.sandbox import built_program
from harness.silence import PANIC, sounding
from harness.testcase import EndToEndTest
from harness.waiting import wait_for
from harness.wayland_keyboard import WaylandKeyboard
from harness.wayland_session import WaylandSession


class WaylandTest(EndToEndTest):
    def test_window_opens_and_closing_it_ends_the_program(self):
        isolate_from_servers(self.sandbox)
        session = WaylandSession(self.sandbox)
        program = self.sandbox.start("tavro", [built_program("TAVRO_PROGRAM"), "--print-status"])
        window = session.wait_for_window(TITLE)
        # A window of Wayland itself: what comes by way of X has a number there.
        self.assertEqual(window["shell"], "xdg_shell", window)
        self.assertEqual(window["pid"], program.pid, window)
        wait_for(lambda: session.windows(TITLE)[0]["visible"], "the window to be shown")
        program.wait_for_line(lambda line: line.startswith(STATUS), "the first status text")
        session.close(session.wait_for_window(TITLE))
        self.assertEqual(program.wait_for_end(), 0)

    def test_end_of_the_session_leaves_no_note(self):
        JackServer(self.sandbox)
        recorder = Recorder(self.sandbox)
        session = WaylandSession(self.sandbox)
        state = json.dumps({"holdMode": True})
        command = [built_program("TAVRO_PROGRAM"), "--print-status", "--state", state]
        program = self.sandbox.start("tavro", command)
        recorder.wait_for_connection()
        session.wait_for_window(TITLE)
        keyboard = WaylandKeyboard(self.sandbox, session)
        self.addCleanup(keyboard.close)

        def plays():
            # At first the window may not have the keyboard yet.
            keyboard.tap("a")
            return sounding(recorder.messages())

        wait_for(plays, "a note that rings")
        session.compositor.process.kill()
        self.assertNotEqual(program.wait_for_end(), 0)
        wait_for(lambda: recorder.messages()[-len(PANIC) :] == PANIC, "the guard's panic")
        self.assertEqual(sounding(recorder.messages()), set())


if __name__ == "__main__":
    unittest.main()
