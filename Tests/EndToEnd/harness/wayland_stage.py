import json

from .application import STATUS, TITLE
from .jack_server import JackServer
from .keys import PLAYING_KEYS
from .places import Layout
from .recorder import Recorder
from .sandbox import built_program
from .silence import sounding
from .testcase import EndToEndTest
from .waiting import wait_for
from .wayland_keyboard import WaylandKeyboard
from .wayland_pointer import WaylandPointer
from .wayland_session import HEIGHT, WIDTH, WaylandSession


class WaylandStageTest(EndToEndTest):
    """The program in front in a Wayland session, with a keyboard, a server and somebody who listens."""

    def setUp(self):
        super().setUp()
        self.server = JackServer(self.sandbox)
        self.recorder = Recorder(self.sandbox)
        self.session = WaylandSession(self.sandbox)
        self.keyboard = self.new_keyboard()
        # From the beginning: a program takes its time to make the acquaintance of one that comes.
        self._pointer = WaylandPointer(self.sandbox, self.session)
        self.addCleanup(self._pointer.close)
        self._seen = 0

    def new_keyboard(self):
        keyboard = WaylandKeyboard(self.sandbox, self.session)
        self.addCleanup(keyboard.close)
        return keyboard

    def play(self, state=None, wrapper=()):
        """Without chance in the velocities, if the state says nothing else."""
        state = json.dumps({"humanizeVelocity": 0} | (state or {}))
        command = [*wrapper, built_program("TAVRO_PROGRAM"), "--print-status", "--state", state]
        self.program = self.sandbox.start("tavro", command)
        self.recorder.wait_for_connection()
        self.window = self.session.wait_for_window(TITLE)
        self.wait_for_keyboard()

    def wait_for_keyboard(self):
        """Waits until the keys go to the program's window."""
        self._wait_for_notes(lambda: self.keyboard.tap("a"))

    def wait_for_pointer(self):
        """The same of the mouse."""
        self._wait_for_notes(lambda: self.click("key a"))

    def _wait_for_notes(self, play):
        """Plays until that has done something; what it did counts for nothing."""

        def plays():
            play()
            return len(self.recorder.messages()) > self._seen

        wait_for(plays, "a note of the window")
        # Behind all that were typed before.
        self.keyboard.tap("s")
        end = [0x80, PLAYING_KEYS["s"].note, 0]
        wait_for(lambda: self.recorder.messages()[-1] == end, lambda: f"{end} at the end of {self.recorder.messages()}")
        self.assertEqual(sounding(self.recorder.messages()), set())
        self.forget_notes()

    def click(self, name, layout=Layout()):
        """One of the window's places, which fills the screen."""
        self._pointer.click(*layout.in_window(layout.place(name), (WIDTH, HEIGHT)))

    def forget_notes(self):
        self._seen = len(self.recorder.messages())

    def assert_played(self, *expected):
        """Waits for so many messages since the last call, and compares them all: each ("on" or "off", key)."""
        before, self._seen = self._seen, self._seen + len(expected)
        messages = self.recorder.wait_for_messages(self._seen)[before:]
        wanted = [
            [0x90, PLAYING_KEYS[key].note, 100] if state == "on" else [0x80, PLAYING_KEYS[key].note, 0]
            for state, key in expected
        ]
        self.assertEqual(messages, wanted)
