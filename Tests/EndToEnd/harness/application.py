import json

from .sandbox import built_program
from .waiting import wait_for

TITLE = "TAVRO"
STATUS = "status: "


class Application:
    """The program, its window in front."""

    def __init__(self, sandbox, display, state=None):
        arguments = [built_program("TAVRO_PROGRAM"), "--print-status"]
        if state is not None:
            arguments += ["--state", json.dumps(state)]
        self.program = sandbox.start("tavro", arguments)
        self.window = display.wait_for_window(TITLE)
        display.activate(self.window)

    def status_texts(self):
        return [line.removeprefix(STATUS) for line in self.program.lines if line.startswith(STATUS)]

    def wait_for_status(self, condition, what):
        wait_for(
            lambda: any(condition(text) for text in self.status_texts()),
            lambda: f"{what}; the status texts are {self.status_texts()}",
        )
