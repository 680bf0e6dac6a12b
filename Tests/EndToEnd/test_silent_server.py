"""The JACK server is there and does not answer: as when it is stopped, or hangs in a driver."""

import re
import signal
import unittest

from harness.adapter_probe import ConnectionProbe
from harness.application import Application
from harness.display import Display
from harness.jack_server import JackServer
from harness.recorder import Recorder
from harness.silence import PANIC, sounding
from harness.stage import StageTest
from harness.testcase import EndToEndTest
from harness.waiting import wait_for

CLIENT_FAILURE = re.compile(r"MIDI Client Fehler -\d+")
ACTIVE = "Virtueller Ausgang aktiv"
# What waits for the server's answer waits several times as long.
SECONDS_TO_END = 6


def stop(test, server):
    server.program.process.send_signal(signal.SIGSTOP)
    # Before it is ended, which it has to answer.
    test.addCleanup(server.program.process.send_signal, signal.SIGCONT)


def go_on(server):
    server.program.process.send_signal(signal.SIGCONT)


def wait_for_quick_end(program):
    wait_for(lambda: not program.is_running(), f"the end of {program.name}", SECONDS_TO_END)


class StartTest(EndToEndTest):
    def setUp(self):
        super().setUp()
        self.server = self.start_server()
        self.display = Display(self.sandbox)
        stop(self, self.server)
        self.application = Application(self.sandbox, self.display)
        self.application.wait_for_status(CLIENT_FAILURE.fullmatch, "the failure of the MIDI client")

    def start_server(self):
        return JackServer(self.sandbox)

    def test_window_quits(self):
        self.display.tap("alt+F4")
        wait_for_quick_end(self.application.program)
        self.assertEqual(self.application.program.wait_for_end(), 0)

    def test_server_that_answers_late_is_played_through(self):
        go_on(self.server)
        self.application.wait_for_status(ACTIVE.__eq__, "the client")
        recorder = Recorder(self.sandbox)
        recorder.wait_for_connection()
        self.display.tap("a")
        self.assertEqual([message[:2] for message in recorder.wait_for_messages(2)], [[0x90, 60], [0x80, 60]])


class QuittingTest(StageTest):
    def quit_in_the_middle(self):
        stop(self, self.server)
        self.display.tap("alt+F4")
        wait_for_quick_end(self.application.program)
        self.assertEqual(self.application.program.wait_for_end(), 0)
        go_on(self.server)
        # The guard has it sent when the server answers.
        wait_for(lambda: self.recorder.messages()[-len(PANIC) :] == PANIC, "the panic")
        self.assertEqual(sounding(self.recorder.messages()), set())

    def test_held_chord(self):
        self.play({"holdMode": True, "chordMode": "Seventh"})
        self.display.tap("a")
        wait_for(lambda: len(sounding(self.recorder.messages())) == 4, "the chord")
        self.quit_in_the_middle()

    def test_strum(self):
        self.play({"holdMode": True, "chordMode": "Eleventh", "strumMilliseconds": 50})
        self.display.tap("a")
        wait_for(lambda: sounding(self.recorder.messages()), "the first note of the strum")
        self.quit_in_the_middle()


class PlayingTest(StageTest):
    def test_notes_of_meanwhile_end_when_it_goes_on(self):
        self.play({"chordMode": "Eleventh", "strumMilliseconds": 50})
        self.display.press("a")
        wait_for(lambda: sounding(self.recorder.messages()), "the first note of the strum")
        stop(self, self.server)
        self.display.release("a")
        self.display.tap("s")
        self.application.wait_for_status(re.compile("Note Off .*").fullmatch, "the end of the notes")
        go_on(self.server)
        self.display.tap("alt+F4")
        self.assertEqual(self.application.program.wait_for_end(), 0)
        wait_for(lambda: self.recorder.messages()[-len(PANIC) :] == PANIC, "the panic")
        before = self.recorder.messages()[: -len(PANIC)]
        self.assertEqual(sounding(before), set())

    def test_destination_that_is_chosen_meanwhile_is_connected_when_it_goes_on(self):
        probe = ConnectionProbe(self.sandbox)
        self.addCleanup(probe.program.end)
        synth = Recorder(self.sandbox, sources=(), inputs=("in",), name="Synth")
        wait_for(lambda: "Synth:in" in probe.ask("destinations", "destinations"), "the destination")
        stop(self, self.server)
        probe.tell("select", "Synth:in")
        # It answers before the server does.
        self.assertIn("Synth:in", probe.ask("destinations", "destinations"))
        go_on(self.server)
        synth.wait_for_connection("in")
        probe.tell("strum", 0, 60)
        self.assertIn([0x90, 60, 100], synth.wait_for_messages(1, "in"))

    def test_what_waits_for_a_connection_in_vain_counts_as_lost(self):
        probe = ConnectionProbe(self.sandbox)
        self.addCleanup(probe.program.end)
        synth = Recorder(self.sandbox, sources=(), inputs=("in",), name="Synth")
        wait_for(lambda: "Synth:in" in probe.ask("destinations", "destinations"), "the destination")
        stop(self, self.server)
        probe.tell("select", "Synth:in")
        probe.tell("strum", 0, 60, 64)
        # What it tells of the loss comes with the next note.
        wait_for(lambda: probe.tell("strum", 0, 67) or probe.lost_messages() >= 2, "the loss")
        go_on(self.server)
        synth.wait_for_connection("in")
        self.assertNotIn([0x90, 60, 100], synth.messages("in"))


if __name__ == "__main__":
    unittest.main()
