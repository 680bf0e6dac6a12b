"""There is no JACK server at all, it comes later than the program, or it goes while the program plays."""

import re
import unittest

from harness.application import Application
from harness.display import Display
from harness.jack_server import JackServer, is_server_there, isolate_from_servers
from harness.recorder import Recorder
from harness.stage import StageTest
from harness.testcase import EndToEndTest

CLIENT_FAILURE = re.compile(r"MIDI Client Fehler -\d+")


class WithoutServerTest(EndToEndTest):
    def test_window_tells_the_failure_and_keeps_running(self):
        isolate_from_servers(self.sandbox)
        display = Display(self.sandbox)
        application = Application(self.sandbox, display)
        application.wait_for_status(CLIENT_FAILURE.fullmatch, "the failure of the MIDI client")
        display.tap("a", "s")
        self.assertFalse(is_server_there(self.sandbox))
        display.tap("alt+F4")
        self.assertEqual(application.program.wait_for_end(), 0)
        # Nothing was played, and the failure is what there is to tell.
        self.assertEqual(len(application.status_texts()), 1, application.status_texts())


class LateServerTest(EndToEndTest):
    def test_server_that_comes_later_is_found(self):
        server = JackServer(self.sandbox)
        server.program.process.terminate()
        server.program.wait_for_end()
        display = Display(self.sandbox)
        application = Application(self.sandbox, display)
        application.wait_for_status(CLIENT_FAILURE.fullmatch, "the failure of the MIDI client")
        display.tap("a")
        server.restart()
        recorder = Recorder(self.sandbox)
        application.wait_for_status("Virtueller Ausgang aktiv".__eq__, "the client")
        recorder.wait_for_connection()
        display.tap("s")
        played = [message[:2] for message in recorder.wait_for_messages(2)]
        self.assertEqual(played, [[0x90, 61], [0x80, 61]])
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
