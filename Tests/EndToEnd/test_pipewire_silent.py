"""PipeWire is there and does not answer."""

import unittest

import test_silent_server
from harness.pipewire_session import PipeWireSession
from harness.pipewire_stage import PipeWireStageTest


class StartTest(test_silent_server.StartTest):
    def start_server(self):
        return PipeWireSession(self.sandbox)


class QuittingTest(PipeWireStageTest, test_silent_server.QuittingTest):
    pass


class PlayingTest(PipeWireStageTest, test_silent_server.PlayingTest):
    pass


if __name__ == "__main__":
    unittest.main()
