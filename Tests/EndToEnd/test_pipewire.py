"""The program in its window plays through PipeWire, which speaks JACK to it."""

import signal
import unittest

import test_jack_faults
from harness.controls import ControlsTest
from harness.pipewire_stage import PipeWireStageTest
from harness.recorder import SOURCE, Recorder
from harness.sandbox import built_program
from harness.silence import PANIC
from harness.waiting import wait_for

OUTPUT = "TAVRO:TAVRO MIDI Out"
LOST = "MIDI Verbindung verloren"
ACTIVE = "Virtueller Ausgang aktiv"


class PipeWireTest(PipeWireStageTest, ControlsTest):
    def synth(self, name):
        return Recorder(self.sandbox, sources=(), inputs=("in",), name=name)

    def choose(self, destination):
        """In the picker, whose entries are the program's own source and then what the player lists too."""
        listed = self.sandbox.run(built_program("TAVRO_PLAY"), "--list-destinations", "--live", "jack")
        names = [line.split("\t")[1] for line in listed.stdout.splitlines()]
        self.surface.choose("MIDI output", 1 + names.index(destination))

    def start_with(self, destination):
        self.start()
        self.surface.toggle_settings()
        self.choose(destination)
        self.server.wait_for_links(OUTPUT, [destination])

    def test_ports_have_their_names_for_everybody(self):
        self.start()
        self.assertLessEqual({SOURCE, OUTPUT}, set(self.server.ports()))
        ports = self.server.directions()
        own = {name: direction for name, direction in ports.items() if name.startswith("TAVRO")}
        self.assertEqual(own, {SOURCE: "output", OUTPUT: "output"})
        # Nothing is chosen, and nobody but who asked for it is connected.
        self.assertEqual(self.server.led_from(OUTPUT), set())
        self.assertEqual(self.server.led_from(SOURCE), {"Recorder:from 1"})
        self.assert_plays("a", 60)

    def test_chosen_destination_alone_is_connected_and_played(self):
        first, second = self.synth("First"), self.synth("Second")
        self.start_with("First:in")
        self.display.tap("s")
        self.assertEqual(first.wait_for_messages(2, "in"), [[0x90, 61, 100], [0x80, 61, 0]])
        self.assertEqual(second.messages("in"), [])
        self.assertEqual(self.recorder.messages(), [])
        self.assertEqual(self.server.led_from(SOURCE), {"Recorder:from 1"})

    def test_receiver_that_is_killed_and_returns_is_connected_and_played_again(self):
        synth, other = self.synth("Synth"), self.synth("Other")
        self.start_with("Synth:in")
        synth.program.process.kill()
        synth.program.wait_for_end()
        self.server.wait_for_links(OUTPUT, [])
        self.display.tap("s")
        again = self.synth("Synth")
        self.server.wait_for_links(OUTPUT, ["Synth:in"])
        self.display.tap("d")
        # What was on its way when it came may reach it too.
        played = [[0x90, 62, 100], [0x80, 62, 0]]
        wait_for(lambda: again.messages("in")[-2:] == played, lambda: f"{played}; there are {again.messages('in')}")
        self.assertEqual(other.messages("in"), [])
        self.assertEqual(self.recorder.messages(), [])

    def test_server_that_is_killed_and_returns(self):
        synth = self.synth("Synth")
        self.start_with("Synth:in")
        self.server.kill()
        self.application.wait_for_status(LOST.__eq__, "the loss")
        self.server.start()
        self.application.wait_for_status(lambda _: self.application.status_texts()[-1] == ACTIVE, "the return")
        texts = self.application.status_texts()
        self.assertEqual(texts[texts.index(LOST) :], [LOST, ACTIVE])
        for recorder in (synth, self.recorder):
            recorder.program.wait_for_end()

        self.recorder, synth = Recorder(self.sandbox), self.synth("Synth")
        self.recorder.wait_for_connection()
        self.server.wait_for_links(OUTPUT, ["Synth:in"])
        self.display.tap("d")
        self.assertEqual(synth.wait_for_messages(2, "in"), [[0x90, 62, 100], [0x80, 62, 0]])
        self.assertEqual(self.recorder.messages(), [])

    def test_quitting_silences_held_notes(self):
        for keys in ("alt+F4", "ctrl+q"):
            with self.subTest(keys=keys):
                before = len(self.recorder.messages())
                self.start()
                self.display.press("a", "s")
                self.recorder.wait_for_messages(before + 2)
                self.display.tap(keys)
                self.assertEqual(self.application.program.wait_for_end(), 0)
                messages = self.recorder.wait_for_messages(before + 4 + len(PANIC))[before + 2 :]
                self.assertCountEqual(messages[:2], [[0x80, 60, 0], [0x80, 61, 0]])
                self.assertEqual(messages[2:], PANIC)
                self.display.release("a", "s")

    def test_guard_silences_what_a_killed_program_has_left(self):
        self.start()
        self.display.press("a")
        self.recorder.wait_for_messages(1)
        self.application.program.process.kill()
        wait_for(lambda: self.recorder.messages()[-len(PANIC) :] == PANIC, "the silence")

    def test_guard_silences_what_a_stopped_program_has_left_and_it_returns(self):
        self.start()
        self.display.press("a")
        self.recorder.wait_for_messages(1)
        self.application.program.process.send_signal(signal.SIGSTOP)
        wait_for(lambda: self.recorder.messages()[-len(PANIC) :] == PANIC, "the silence")
        self.display.release("a")
        connections = self.recorder.connections_made()
        self.application.program.process.send_signal(signal.SIGCONT)
        self.application.wait_for_status(lambda _: LOST in self.application.status_texts(), "the loss")
        self.application.wait_for_status(lambda _: self.application.status_texts()[-1] == ACTIVE, "the return")
        wait_for(lambda: self.recorder.connections_made() > connections, "the connection")
        self._seen = len(self.recorder.messages())
        self.assert_plays("d", 62)


class FaultsTest(PipeWireStageTest, test_jack_faults.JackFaultsTest):
    pass


if __name__ == "__main__":
    unittest.main()
