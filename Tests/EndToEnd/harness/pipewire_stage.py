from .pipewire_session import PipeWireSession
from .stage import StageTest


class PipeWireStageTest(StageTest):
    """The program in front on a display, and PipeWire in the place of a JACK server."""

    def start_server(self):
        return PipeWireSession(self.sandbox)
