"""Global Play in a Wayland session whose user may not open the keyboards."""

import unittest

from harness.application import GLOBAL_PLAY
from harness.foreign_devices import with_foreign_devices
from harness.wayland_stage import WaylandStageTest

class WaylandGlobalPlayTest(WaylandStageTest):
    def global_play_texts(self):
        return [line.removeprefix(GLOBAL_PLAY) for line in self.program.lines if line.startswith(GLOBAL_PLAY)]

    def test_missing_rights_are_told_and_the_window_plays_on(self):
        self.play(wrapper=with_foreign_devices(self.sandbox))
        for _ in range(2):
            self.keyboard.tap("grave", "d")
            self.assert_played(("on", "d"), ("off", "d"))
        self.assertEqual(self.global_play_texts(), ["Allow Accessibility for Global Play"])


if __name__ == "__main__":
    unittest.main()
