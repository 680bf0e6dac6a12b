from .application import Application
from .display import Display
from .jack_server import JackServer
from .recorder import Recorder
from .testcase import EndToEndTest

NOTE_ON = 0x90
NOTE_OFF = 0x80
# 100, moved by the seven that the program humanizes at most.
DEFAULT_VELOCITIES = range(93, 108)


class StageTest(EndToEndTest):
    """The program in front on a display, with a server and somebody who listens."""

    SCREEN = (1400, 1000)
    SCREENS = 1
    SERVER_WAITS = True

    def setUp(self):
        super().setUp()
        self.server = self.start_server()
        self.display = Display(self.sandbox, self.SCREEN, self.SCREENS)
        self.recorder = Recorder(self.sandbox)

    def start_server(self):
        return JackServer(self.sandbox, waits=self.SERVER_WAITS)

    def play(self, state=None, files=()):
        self.application = Application(self.sandbox, self.display, state, files=files)
        self.recorder.wait_for_connection()

    def assert_notes(self, expected):
        """Waits for so many messages and compares them all: each is ("on" or "off", note)."""
        messages = self.recorder.wait_for_messages(len(expected))
        words = {NOTE_ON: "on", NOTE_OFF: "off"}
        self.assertEqual([(words.get(message[0], message[0]), message[1]) for message in messages], expected)
        for message in messages:
            self.assertEqual(len(message), 3, messages)
            if message[0] == NOTE_ON:
                self.assertIn(message[2], DEFAULT_VELOCITIES, messages)
