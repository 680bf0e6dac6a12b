"""There is no JACK server at all, or it goes while the program plays."""

import re
import unittest

from harness.application import Application
from harness.display import Display
from harness.jack_server import is_server_there, isolate_from_servers
from harness.stage import StageTest
from harness.testcase import EndToEndTest

CLIENT_FAILURE = re.compile(r"MIDI Client Fehler -\d+")


class WithoutServerTest(EndToEndTest):
    def test_window_tells_the_failure_and_keeps_running(self):
        isolate_from_servers(self.sandbox)
        display = Display(self.sandbox)
        application = Application(self.sandbox, display)
        application.wait_for_status(CLIENT_FAILURE.fullmatch, "the failure of the MIDI client")
        # What was played is told even though nobody can hear it, so the keys have been worked through.
        display.tap("a", "s")
        application.wait_for_status("Note Off C#4".__eq__, "the second note's end")
        self.assertEqual(
            application.status_texts()[-4:], ["Note On C4", "Note Off C4", "Note On C#4", "Note Off C#4"]
        )
        self.assertFalse(is_server_there(self.sandbox))
        display.tap("alt+F4")
        self.assertEqual(application.program.wait_for_end(), 0)


class ServerGoesTest(StageTest):
    def test_program_plays_on_without_its_server(self):
        self.play()
        self.display.tap("a")
        self.assert_notes([("on", 60), ("off", 60)])
        self.server.program.process.terminate()
        self.server.program.wait_for_end()
        self.application.wait_for_status("MIDI Verbindung verloren".__eq__, "the loss")
        self.display.tap("s", "d")
        self.display.tap("alt+F4")
        self.assertEqual(self.application.program.wait_for_end(), 0)
        texts = self.application.status_texts()
        told = texts[texts.index("MIDI Verbindung verloren") :]
        self.assertEqual([text for text in told if text.startswith("Note")], [])


if __name__ == "__main__":
    unittest.main()
