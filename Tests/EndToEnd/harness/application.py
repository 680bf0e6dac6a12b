import json

from .sandbox import built_program
from .surface import Surface
from .waiting import wait_for

TITLE = "TAVRO"
STATUS = "status: "
GLOBAL_PLAY = "global play: "


class Application:
    """The program, its window in front."""

    def __init__(self, sandbox, display, state=None, wrapper=(), files=()):
        arguments = [*wrapper, built_program("TAVRO_PROGRAM"), "--print-status", *files]
        if state is not None:
            arguments += ["--state", json.dumps(state)]
        self.program = sandbox.start("tavro", arguments)
        self.display = display
        self.window = display.wait_for_window(TITLE)
        display.activate(self.window)
        self.surface = Surface(display, self.window)
        self.surface.wait_until_drawn()

    def status_texts(self):
        return [line.removeprefix(STATUS) for line in self.program.lines if line.startswith(STATUS)]

    def wait_for_status(self, condition, what):
        wait_for(
            lambda: any(condition(text) for text in self.status_texts()),
            lambda: f"{what}; the status texts are {self.status_texts()}",
        )

    def global_play_texts(self):
        return [line.removeprefix(GLOBAL_PLAY) for line in self.program.lines if line.startswith(GLOBAL_PLAY)]

    def wait_for_global_play(self, text):
        """Waits until the latest text about Global Play is this one."""
        wait_for(
            lambda: self.global_play_texts()[-1:] == [text],
            lambda: f"{text}; the texts about Global Play are {self.global_play_texts()}",
        )
