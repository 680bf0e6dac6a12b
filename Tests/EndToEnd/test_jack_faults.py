"""The server goes while a strummed chord is held in the program's window, and returns."""

import unittest

from harness.recorder import SOURCE, Recorder
from harness.stage import NOTE_OFF, NOTE_ON, StageTest
from harness.waiting import wait_for

LOST = "MIDI Verbindung verloren"
ACTIVE = "Virtueller Ausgang aktiv"
OUTPUT = "TAVRO:TAVRO MIDI Out"
# Six notes, each key other ones.
STRUM = {"chordMode": "Eleventh", "strumMilliseconds": 50, "scaleName": "Major", "humanizeVelocity": 0}


class JackFaultsTest(StageTest):
    def test_server_killed_in_the_middle_of_a_strum(self):
        self._lose_and_return(self.server.program.process.kill)

    def test_server_ended_in_the_middle_of_a_strum(self):
        self._lose_and_return(self.server.program.process.terminate)

    def _lose_and_return(self, end_server):
        self.play(STRUM)
        self.display.press("a")
        self.recorder.wait_for_messages(2)
        end_server()
        self.server.program.wait_for_end()
        self.application.wait_for_status(LOST.__eq__, "the loss")
        self.recorder.program.wait_for_end()
        old = {message[1] for message in self.recorder.messages()}
        # The key is still down, and another one is played to nobody.
        self.display.tap("f")

        self.server.restart()
        self.application.wait_for_status(
            lambda _: self.application.status_texts()[-1] == ACTIVE, "the return of the system"
        )
        wait_for(lambda: SOURCE in self.server.ports(), "the port to return")
        self.assertIn(OUTPUT, self.server.ports())
        texts = self.application.status_texts()
        self.assertEqual(texts[texts.index(LOST) :], [LOST, ACTIVE])

        self.recorder = Recorder(self.sandbox)
        self.recorder.wait_for_connection()
        self.display.release("a")
        self.display.press("s")
        chord = [message[1] for message in self.recorder.wait_for_messages(6)]
        self.display.release("s")
        messages = self.recorder.wait_for_messages(12)
        self.assertEqual(messages[:6], [[NOTE_ON, note, 100] for note in chord])
        self.assertCountEqual(messages[6:], [[NOTE_OFF, note, 0] for note in chord])
        self.assertNotEqual(set(chord), old)
        self.assertTrue(self.application.program.is_running())
        self.display.tap("alt+F4")
        self.assertEqual(self.application.program.wait_for_end(), 0)


if __name__ == "__main__":
    unittest.main()
