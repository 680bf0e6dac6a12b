"""PipeWire's periods change while notes are played, and strums lie at their frames."""

import signal
import unittest

from harness.adapter_probe import Probe
from harness.pipewire_session import PipeWireSession
from harness.recorder import Recorder
from harness.sandbox import built_program
from harness.testcase import EndToEndTest

# As others do that play fast: a note every 20 ms.
KEYS = "asdfghjkl"
RUN = "set humanizeVelocity 0\n" + "".join(
    f"at {20 * beat}\ndown {key}\nat {20 * beat + 10}\nup {key}\n"
    for beat, key in ((beat, KEYS[beat % len(KEYS)]) for beat in range(50_000))
)
# Each chord takes longer than the time until the next one.
STRUMS = """set humanizeVelocity 0
set scaleName "Major"
set chordMode "Eleventh"
set strumMilliseconds 30
""" + "".join(
    f"at {400 * beat}\ndown {key}\nat {400 * beat + 300}\nup {key}\n"
    for beat, key in ((beat, KEYS[beat % len(KEYS)]) for beat in range(5_000))
)
# In frames: down, up, and down again.
PERIODS = (2048, 8192, 4096)
RATES = (44100, 96000, 48000)
# So many come before a change and behind it.
MESSAGES = 20
# PipeWire does not wait for a client that got no time: what it played in that period is lost, or is read again in the
# next one when the clock changes between the two. No client can help that, and none is told.
MOST_ATTEMPTS = 20
RATE = 48000
# A frame more or less for rounding the time of day to frames.
ROUNDING = 1
STEP = 20
NOTES = 12
MARK = [128, 60, 0]


class PipeWireTimingTest(EndToEndTest):
    def setUp(self):
        super().setUp()
        self.session = PipeWireSession(self.sandbox)

    def _assert_plays_over(self, setting, value, script, differences):
        """In one of some runs there are no differences between what was sent and what arrived."""
        for _ in range(MOST_ATTEMPTS):
            sent, arrived = self._play_over(setting, value, script)
            found = differences(sent, arrived)
            if not found:
                return
            self.session.force(setting, 0)
        self.fail(f"{setting} {value}: {found}")

    def _play_over(self, setting, value, script):
        """Returns what was sent and what arrived."""
        synth = Recorder(self.sandbox, sources=(), inputs=("in",), name="Synth")
        options = ["--format", "jsonl", "--live", "jack", "--destination", "Synth:in", script]
        player = self.sandbox.start("tavro-play", [built_program("TAVRO_PLAY"), *options])
        synth.wait_for_messages(MESSAGES, "in")
        self.session.force(setting, value)
        synth.wait_for_clock(**{{"quantum": "period", "rate": "rate"}[setting]: value})
        synth.wait_for_messages(len(synth.messages("in")) + MESSAGES, "in")
        player.process.send_signal(signal.SIGTERM)
        self.assertEqual(player.wait_for_end(), 130)
        # It writes what has come to the last.
        synth.program.end()
        return [line["midi"] for line in player.objects if "midi" in line], synth.messages("in")

    def _script(self, text):
        path = self.sandbox.folder / "script.keys"
        path.write_text(text, encoding="utf-8")
        return path

    def test_other_periods_lose_and_double_no_note(self):
        for text in (RUN, STRUMS):
            script = self._script(text)
            for period in PERIODS:
                self._assert_plays_over(
                    "quantum", period, script, lambda sent, arrived: None if arrived == sent else (sent, arrived)
                )

    def test_other_rates_double_no_note_and_all_else_arrives(self):
        def differences(sent, arrived):
            # PipeWire stops everybody for the change, and what is played meanwhile is lost.
            first = next((place for place, one in enumerate(arrived) if one != sent[place]), len(arrived))
            rest = sent[first + len(sent) - len(arrived) :]
            return None if first >= MESSAGES and arrived[first:] == rest else (sent, arrived)

        script = self._script(RUN)
        for rate in RATES:
            self._assert_plays_over("rate", rate, script, differences)

    def test_strum_lies_at_its_frames(self):
        for _ in range(MOST_ATTEMPTS):
            times, arrivals = self._strum()
            if len(arrivals) == NOTES:
                break
        self.assertEqual([number for number, _ in arrivals], list(range(NOTES)))
        # Clients that are not in the graph count from elsewhere: each distance from the first note is compared with
        # the one that was asked for, from between these two looks at a clock.
        (first_before, first_after), first_frame = times[0], arrivals[0][1]
        for (number, frame), (before, after) in zip(arrivals, times):
            handed_over = frame - first_frame - number * STEP * RATE // 1000
            self.assertGreaterEqual(handed_over, before - first_after - ROUNDING, (times, arrivals))
            self.assertLessEqual(handed_over, after - first_before + ROUNDING, (times, arrivals))

    def _strum(self):
        """The clock before and after each note was handed over, and each with its frame."""
        probe, recorder = Probe(self.sandbox), Recorder(self.sandbox)
        recorder.wait_for_connection()
        times = probe.ask("strum", "strum", STEP, NOTES)
        probe.tell("received", *MARK)
        recorder.program.wait_for_object(lambda line: line.get("bytes") == MARK, "the mark")
        arrivals = [(event["bytes"][1], event["frame"]) for event in recorder.events()[:-1]]
        for program in (probe.program, recorder.program):
            program.end()
        return times, arrivals


if __name__ == "__main__":
    unittest.main()
