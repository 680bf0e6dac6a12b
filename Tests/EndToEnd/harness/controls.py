from .stage import NOTE_ON, StageTest

C_MAJOR = [60, 64, 67]


class ControlsTest(StageTest):
    """The controls are used by mouse and keyboard, and what the keys play tells what that did."""

    # Room for the window with both panels open.
    SCREEN = (1600, 1300)

    def start(self, state=None, files=()):
        """Without chance in the velocities, if the state says nothing else."""
        self.play({"humanizeVelocity": 0} | (state or {}) if not files else None, files)
        self.surface = self.application.surface
        self._seen = 0

    def next_messages(self, count):
        """Those that came since the last call, once there are so many; more are a failure."""
        messages = self.recorder.wait_for_messages(self._seen + count)[self._seen :]
        self._seen += len(messages)
        self.assertEqual(len(messages), count, messages)
        return messages

    def play_key(self, key, sounding=1):
        """Taps a key that sounds so many notes, and ends them. Returns the note-ons."""
        self.display.tap(key)
        messages = self.next_messages(2 * sounding)
        notes = [message[1] for message in messages]
        self.assertEqual([message[0] & 0xF0 for message in messages[:sounding]], [NOTE_ON] * sounding)
        self.assertCountEqual(notes[:sounding], notes[sounding:])
        return messages[:sounding]

    def assert_plays(self, key, *notes):
        self.assertEqual([message[1] for message in self.play_key(key, len(notes))], list(notes))

    def assert_next(self, *expected):
        """The next messages, each ("on" or "off", note)."""
        messages = self.next_messages(len(expected))
        self.assertEqual([("on" if one[0] & 0xF0 == NOTE_ON else "off", one[1]) for one in messages], list(expected))
