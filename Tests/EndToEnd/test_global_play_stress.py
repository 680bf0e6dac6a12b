"""Random typing, in and out of Global Play: every key is played or typed, exactly once and in order."""

import collections
import itertools
import random
import unittest

from harness.global_play import GlobalPlayTest
from harness.random_typing import NOTE_OFF, NOTE_ON, RandomTyping
from harness.waiting import wait_for
from seeds import seed

SEED = 1207
# Presses and releases: half as many are presses.
EVENTS = 20_000
EVENTS_A_ROUND = 1_000
MOST_REPETITIONS = 3


class StressTest(GlobalPlayTest):
    EVENTS = EVENTS
    # Of each kind of event, or nothing is shown.
    FEWEST = 50

    def setUp(self):
        super().setUp()
        self.random = random.Random(seed(SEED))
        self.counts = {}
        self.events = 0

    def test_every_key_is_played_or_typed_exactly_once(self):
        self.play_behind_the_terminal({"humanizeVelocity": 0})
        repetitions = 0
        while self.events < self.EVENTS:
            if not self.play_round():
                repetitions += 1
                self.assertLessEqual(repetitions, MOST_REPETITIONS, "rounds with missed periods")
        print(f"{self.events} events: {self.counts}; {repetitions} rounds repeated")
        for what, count in self.counts.items():
            self.assertGreater(count, self.FEWEST, f"too few {what} to show anything")

    def make_typing(self):
        return RandomTyping(self.random, self.typist, is_on=True)

    def play_round(self):
        """Types, compares all that came of it; false when the recorder has missed notes by its own fault."""
        xruns = self.recorder.xruns()
        before = len(self.recorder.messages())
        typing = self.make_typing()
        while typing.events < EVENTS_A_ROUND:
            typing.step()
        typing.end_round()
        # What should not have come has come by then.
        typing.play("a")
        self.assert_typed(bytes(typing.typed))
        if not self.are_played(typing, before, xruns):
            return False
        self.assert_nothing_sounds(self.recorder.messages())
        self.events += typing.events
        for what, count in typing.counts.items():
            self.counts[what] = self.counts.get(what, 0) + count
        return True

    def are_played(self, typing, before, xruns):
        wanted = list(typing.messages)

        def have_come():
            return len(self.recorder.messages()) - before >= len(wanted)

        try:
            wait_for(have_come, f"{len(wanted)} messages", seconds=20)
        except AssertionError:
            # Shown below.
            pass
        messages = self.recorder.messages()[before:]
        wanted, messages = (self.put_in_order(typing, these) for these in (wanted, messages))
        if messages != wanted and self.recorder.xruns() > xruns:
            return False
        self.assert_same(messages, wanted)
        return True

    def put_in_order(self, typing, messages):
        """The same for all orders that are allowed."""
        for begin, end in typing.unordered_spans:
            messages[begin:end] = sorted(messages[begin:end])
        return messages

    def assert_same(self, messages, wanted):
        pairs = enumerate(itertools.zip_longest(messages, wanted))
        index = next((index for index, (message, other) in pairs if message != other), None)
        if index is not None:
            shown = slice(max(0, index - 5), index + 10)
            self.fail(
                f"of {len(wanted)} messages, {len(messages)} came, the first {index} as wanted; "
                f"wanted {wanted[shown]}, came {messages[shown]}"
            )

    def assert_nothing_sounds(self, messages):
        sounding = collections.Counter()
        for state, note, _ in messages:
            sounding[note] += {NOTE_ON: 1, NOTE_OFF: -1}[state]
        self.assertEqual(sounding.total(), 0, sounding)


if __name__ == "__main__":
    unittest.main()
