"""The program is there before PipeWire is, as at a login."""

import re
import unittest

from harness.application import Application
from harness.display import Display
from harness.pipewire_session import PipeWireSession
from harness.recorder import Recorder
from harness.testcase import EndToEndTest

CLIENT_FAILURE = re.compile(r"MIDI Client Fehler -\d+")
ACTIVE = "Virtueller Ausgang aktiv"


class PipeWireStartTest(EndToEndTest):
    def test_program_that_was_started_first_finds_its_server(self):
        server = PipeWireSession(self.sandbox, starts=False)
        application = Application(self.sandbox, Display(self.sandbox), {"humanizeVelocity": 0})
        application.wait_for_status(CLIENT_FAILURE.fullmatch, "the failure of the MIDI client")
        server.start()
        application.wait_for_status(lambda _: application.status_texts()[-1] == ACTIVE, "the return of the system")
        recorder = Recorder(self.sandbox)
        recorder.wait_for_connection()
        application.display.tap("a")
        self.assertEqual(recorder.wait_for_messages(2), [[0x90, 60, 100], [0x80, 60, 0]])


if __name__ == "__main__":
    unittest.main()
