"""The headless player in real time: what it plays reaches a JACK server's clients as it does in virtual time."""

import json
import signal
import unittest

from harness.jack_server import JackServer, is_server_there, isolate_from_servers
from harness.processes import IN_ITS_OWN_GROUP, state_of
from harness.recorder import Recorder
from harness.sandbox import built_program
from harness.silence import PANIC, sounding
from harness.testcase import EndToEndTest
from harness.waiting import wait_for

# Strums up and down, releases in the middle of one, the bass, Smart Hold, another channel, a panic.
SCRIPT = """
set humanizeVelocity 0
set scaleName "Major"
control chordEnabledBinding true
control chordComplexityBinding 85
set bassNoteEnabled true
set strumMilliseconds 40
down a
at 60
show
at 75
up a
down f
at 300
set strumMilliseconds -25
down g
down h
at 310
up h
at 500
up f
up g
set midiChannel 7
control smartHoldBinding true
down a
at 700
down d
at 720
panic
down s
at 900
show
quit
"""

# Plays until it is ended; what sounds when it is, cannot be known.
ENDLESS = "set humanizeVelocity 0\n" + "".join(
    f"at {100 * beat}\n{'up' if beat % 2 else 'down'} a\n" for beat in range(100_000)
)


# Rings for longer than any test takes.
LATCHED = """
set humanizeVelocity 0
set holdMode true
at 1000
down a
up a
down d
up d
at 3000
down g
up g
at 2000000
"""
CHORD = {(0, 60), (0, 62)}


class PlayerTest(EndToEndTest):
    def script(self, text):
        path = self.sandbox.folder / "script.keys"
        path.write_text(text, encoding="utf-8")
        return path

    def run_player(self, *arguments):
        return self.sandbox.run(built_program("TAVRO_PLAY"), *arguments)

    def start_live(self, script, *arguments, wrapper=()):
        player = built_program("TAVRO_PLAY")
        options = ["--format", "jsonl", "--live", "jack", *arguments]
        return self.sandbox.start("tavro-play", [*wrapper, player, *options, self.script(script)])


def printed_messages(program):
    return [line["midi"] for line in program.objects if "midi" in line]


class LivePlayerTest(PlayerTest):
    def setUp(self):
        super().setUp()
        self.server = JackServer(self.sandbox)

    def synth(self, name, pretty=None):
        return Recorder(self.sandbox, sources=(), inputs=("in",), name=name, pretty=pretty)

    def test_destination_gets_the_messages_of_virtual_time_and_nobody_else_does(self):
        other, synth, listener = self.synth("Other"), self.synth("Synth"), Recorder(self.sandbox)
        virtual = self.run_player("--format", "jsonl", self.script(SCRIPT))
        self.assertEqual(virtual.returncode, 0, virtual.stderr)
        expected = [json.loads(line)["midi"] for line in virtual.stdout.splitlines() if "midi" in line]
        self.assertEqual(expected[-len(PANIC) :], PANIC)

        program = self.start_live(SCRIPT, "--destination", "Synth:in")
        self.assertEqual(program.wait_for_end(), 0)
        self.assertEqual(program.lines, virtual.stdout.splitlines())
        self.assertEqual(synth.wait_for_messages(len(expected), "in"), expected)
        self.assertEqual(other.messages("in"), [])
        self.assertEqual(listener.messages(), [])

    def test_end_of_the_script_silences_what_still_sounds(self):
        synth = self.synth("Synth")
        program = self.start_live("set humanizeVelocity 0\ndown a\nat 50\n", "--destination", "Synth:in")
        self.assertEqual(program.wait_for_end(), 0)
        expected = [[0x90, 60, 100], [0x80, 60, 0], *PANIC]
        self.assertEqual(synth.wait_for_messages(len(expected), "in"), expected)
        self.assertEqual(printed_messages(program), expected)

    def test_signals_end_it_in_silence(self):
        for number in (signal.SIGINT, signal.SIGTERM):
            with self.subTest(signal=number):
                recorder = Recorder(self.sandbox)
                program = self.start_live(ENDLESS)
                recorder.wait_for_messages(2)
                program.process.send_signal(number)
                self.assertEqual(program.wait_for_end(), 130)
                wait_for(lambda: recorder.messages()[-len(PANIC) :] == PANIC, "the silence")
                arrived = recorder.messages()
                self.assertEqual(arrived, printed_messages(program)[-len(arrived) :])
                before = arrived[: -len(PANIC)]
                self.assertEqual(before[-1], [0x80, 60, 0], before)
                recorder.program.end()

    def play_a_latched_chord(self, wrapper=()):
        recorder = Recorder(self.sandbox)
        program = self.start_live(LATCHED, wrapper=wrapper)
        wait_for(lambda: sounding(recorder.messages()) == CHORD, "the chord")
        return recorder, program

    def test_stop_by_the_terminal_is_silent_and_the_script_goes_on_where_it_was(self):
        recorder, program = self.play_a_latched_chord(IN_ITS_OWN_GROUP)
        program.process.send_signal(signal.SIGTSTP)
        wait_for(lambda: state_of(program.pid) == "T", "the player to stop")
        wait_for(lambda: recorder.messages()[-len(PANIC) :] == PANIC, "the silence")
        before = len(recorder.messages())
        program.process.send_signal(signal.SIGCONT)
        wait_for(lambda: len(recorder.messages()) > before, "the next note")
        self.assertEqual(recorder.messages()[before:], [[0x90, 64, 100]])
        program.process.send_signal(signal.SIGTERM)
        self.assertEqual(program.wait_for_end(), 130)

    def test_guard_silences_what_a_killed_player_has_left(self):
        recorder, program = self.play_a_latched_chord()
        program.process.kill()
        wait_for(lambda: recorder.messages()[-len(PANIC) :] == PANIC, "the silence")
        self.assertEqual(sounding(recorder.messages()), set())

    def test_loss_of_the_server_ends_it(self):
        synth = self.synth("Synth")
        program = self.start_live(ENDLESS, "--destination", "Synth:in")
        synth.wait_for_messages(2, "in")
        self.server.program.process.kill()
        self.assertEqual(program.wait_for_end(), 1)
        self.assertEqual(
            program.errors(), "tavro-play: the MIDI system has gone before the script was at its end\n"
        )

    def test_destinations_are_listed_with_numbers_and_names(self):
        self.synth("Synth", "The Synthesizer")
        self.synth("Sampler")
        result = self.run_player("--list-destinations", "--live", "jack")
        self.assertEqual((result.returncode, result.stdout), (0, "1\tThe Synthesizer\n2\tSampler:in\n"))

    def test_unknown_destination_is_named_with_what_there_is(self):
        self.synth("Synth")
        program = self.start_live("down a\n", "--destination", "Sinth:in")
        self.assertEqual(program.wait_for_end(), 1)
        self.assertEqual(
            program.errors(),
            'tavro-play: there is no destination "Sinth:in"; there are:\n1\tSynth:in\n',
        )
        self.assertEqual(program.lines, [])

    def test_destinations_of_the_same_name_are_told_apart_by_number(self):
        first, second = self.synth("First", "Twin"), self.synth("Second", "Twin")
        program = self.start_live("down a\n", "--destination", "Twin")
        self.assertEqual(program.wait_for_end(), 1)
        self.assertIn('2 destinations are called "Twin"', program.errors())
        self.assertIn("1\tTwin\n2\tTwin\n", program.errors())

        program = self.start_live("set humanizeVelocity 0\ndown a\nat 50\n", "--destination", "2")
        self.assertEqual(program.wait_for_end(), 0)
        self.assertEqual(second.wait_for_messages(34, "in")[0], [0x90, 60, 100])
        self.assertEqual(first.messages("in"), [])


class NoServerTest(PlayerTest):
    def test_missing_server_is_told(self):
        isolate_from_servers(self.sandbox)
        for arguments in (["--list-destinations", "--live", "jack"], ["--live", "jack", self.script("down a")]):
            with self.subTest(arguments=arguments):
                result = self.run_player(*arguments)
                self.assertEqual((result.returncode, result.stdout), (1, ""))
                self.assertRegex(
                    result.stderr,
                    r"^tavro-play: no MIDI system can be used for --live jack: jack failed with -\d+\n$",
                )
        self.assertFalse(is_server_there(self.sandbox))


if __name__ == "__main__":
    unittest.main()
