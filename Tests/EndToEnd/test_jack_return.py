"""The server goes and returns; the connection, the chosen destination and the counts are followed."""

import unittest

from harness.adapter_probe import ConnectionProbe, Probe
from harness.jack_server import JackServer
from harness.recorder import SOURCE, Recorder
from harness.testcase import EndToEndTest
from harness.waiting import wait_for

OUTPUT = "TAVRO:TAVRO MIDI Out"
LOST = "MIDI Verbindung verloren"
ACTIVE = "Virtueller Ausgang aktiv"


class JackReturnTest(EndToEndTest):
    def setUp(self):
        super().setUp()
        self.server = JackServer(self.sandbox)

    def _probe(self):
        probe = ConnectionProbe(self.sandbox)
        # Before the servers that were started after it.
        self.addCleanup(probe.program.end)
        return probe

    def _synth(self, name="Synth"):
        return Recorder(self.sandbox, sources=(), inputs=("in",), name=name)

    def _lose_server(self, probe, end_server):
        """Ends the server and waits until the probe has taken it up."""
        losses = len(probe.answers("lost"))
        end_server()
        self.server.program.wait_for_end()
        probe.wait_until(ready=False, listeners=None)
        wait_for(lambda: len(probe.answers("lost")) == losses + 1, "one notice of the loss")
        self.assertEqual(probe.ask("destinations", "destinations"), [])

    def _choose_synth(self, probe, synth):
        wait_for(lambda: "Synth:in" in probe.ask("destinations", "destinations"), "the destination")
        probe.tell("select", "Synth:in")
        synth.wait_for_connection("in")

    def test_destination_that_returns_late_is_connected_and_played_again(self):
        probe, synth = self._probe(), self._synth()
        self._choose_synth(probe, synth)
        probe.tell("strum", 0, 60)
        self.assertEqual(synth.wait_for_messages(1, "in"), [[144, 60, 100]])
        self._lose_server(probe, self.server.program.process.kill)
        synth.program.wait_for_end()

        self.server.restart()
        probe.wait_until(ready=True)
        # Its place is empty, and what is played meanwhile reaches nobody else.
        other, listener = self._synth("Other"), Recorder(self.sandbox, name="Listener")
        listener.wait_for_connection()
        probe.wait_until(listeners=1)
        probe.tell("strum", 5, 61, 62)
        probe.tell("release", 61, 62)

        again = self._synth()
        again.wait_for_connection("in")
        self.assertEqual(again.connections("in"), [OUTPUT])
        probe.tell("strum", 5, 64, 65, 66)
        wait_for(lambda: [144, 66, 100] in again.messages("in"), lambda: f"the notes in {again.program.lines}")
        self.assertEqual(again.messages("in"), [[144, note, 100] for note in (64, 65, 66)])
        self.assertEqual(other.messages("in"), [])
        self.assertEqual(other.connections("in"), [])
        self.assertEqual(listener.messages(), [])

    def test_destination_that_returns_with_the_server_is_connected_again(self):
        probe, synth = self._probe(), self._synth()
        self._choose_synth(probe, synth)
        self._lose_server(probe, self.server.program.process.terminate)
        synth.program.wait_for_end()
        self.server.restart()
        again = self._synth()
        again.wait_for_connection("in")
        probe.tell("strum", 0, 60)
        self.assertEqual(again.wait_for_messages(1, "in"), [[144, 60, 100]])

    def test_every_loss_is_told_once_and_every_return_found(self):
        probe = self._probe()
        self.assertEqual(probe.answers("status"), [ACTIVE])
        for number in range(3):
            process = self.server.program.process
            self._lose_server(probe, process.kill if number % 2 == 0 else process.terminate)
            self.server.restart()
            probe.wait_until(ready=True)
            self.assertEqual([port for port in self.server.ports() if "TAVRO" in port], [OUTPUT, SOURCE])
        self.assertEqual(probe.answers("status"), [ACTIVE] + [LOST, ACTIVE] * 3)
        self.assertEqual(len(probe.answers("lost")), 3)

    def test_listeners_are_counted(self):
        probe = self._probe()
        probe.wait_until(ready=True, listeners=0)
        first = Recorder(self.sandbox, name="First")
        probe.wait_until(listeners=1)
        second = Recorder(self.sandbox, name="Second")
        probe.wait_until(listeners=2)
        first.program.end()
        probe.wait_until(listeners=1)
        second.program.end()
        probe.wait_until(listeners=0, dropped=0)

    def test_server_killed_in_the_middle_of_a_strum(self):
        probe, recorder = self._probe(), Recorder(self.sandbox)
        recorder.wait_for_connection()
        probe.tell("strum", 200, *range(60, 72))
        recorder.wait_for_messages(2)
        self._lose_server(probe, self.server.program.process.kill)
        recorder.program.wait_for_end()
        # None of the rest is told as played.
        self.assertEqual(probe.answers("status")[-1], LOST)

        self.server.restart()
        probe.wait_until(ready=True)
        again = Recorder(self.sandbox)
        again.wait_for_connection()
        probe.tell("strum", 200, 80, 81)
        again.wait_for_messages(2)
        probe.tell("release", 80, 81)
        self.assertEqual(
            again.wait_for_messages(4), [[144, 80, 100], [144, 81, 100], [128, 80, 0], [128, 81, 0]]
        )
        probe.wait_until(dropped=0)

    def test_server_killed_while_the_program_calls_it_all_the_time(self):
        synths = [self._synth(name) for name in ("One", "Two")]
        probe = Probe(self.sandbox)
        probe.tell("hammer", 2000)
        # Alternating destinations: the calls have begun.
        for synth in synths:
            synth.wait_for_messages(2, "in")
        self.server.program.process.kill()
        self.server.program.wait_for_end()
        wait_for(lambda: probe.answers("hammered"), "the end of the calls")
        self.assertEqual(probe.destinations(), [])
        probe.tell("quit")
        self.assertEqual(probe.program.wait_for_end(), 0)
        for synth in synths:
            synth.program.wait_for_end()


if __name__ == "__main__":
    unittest.main(verbosity=2)
