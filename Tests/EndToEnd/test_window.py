"""The main window on a real window manager: its size, its limits, its panels, and how it starts."""

import unittest

from harness.application import TITLE
from harness.sandbox import built_program, tool
from harness.stage import StageTest
from harness.waiting import wait_for
from harness.windows import WindowProperties, windows_titled

# What the user may make of it, by the height at full width. The smallest has its proportions.
LIMITS = {
    805: ((827, 520), (1600, 1006), (1280, 805)),
    909: ((733, 520), (1600, 1136), (1280, 909)),
}


class WindowTest(StageTest):
    def test_starts_at_its_size_in_the_middle_with_its_limits_and_its_icon(self):
        self.play()
        window = self._window()
        window.wait_for_size((1280, 805))
        left, top, width, height = window.geometry()
        self.assertAlmostEqual(left + width / 2, self.SCREEN[0] / 2, delta=3)
        self.assertAlmostEqual(top + height / 2, self.SCREEN[1] / 2, delta=20)
        window.wait_for_limits(*LIMITS[805])
        self.assertLessEqual({16, 32, 48, 64, 128}, window.icon_sizes())

    def test_the_user_cannot_make_it_smaller_or_larger_or_of_another_shape(self):
        self.play()
        window = self._window()
        window.wait_for_limits(*LIMITS[805])
        self._resize(960, 605)
        wait_for(lambda: window.size()[0] < 1280 and self._has_its_shape(window), "a smaller window of its shape")
        self._resize(300, 200)
        wait_for(lambda: window.size()[0] < 960, "the smallest window")
        self.assertGreaterEqual(window.size()[0], 720)
        self.assertGreaterEqual(window.size()[1], 520)
        self._resize(3000, 2000)
        wait_for(lambda: window.size()[0] > 960, "the largest window")
        self.assertLessEqual(window.size()[0], 1600)
        self.assertLessEqual(window.size()[1], 1006)

    def test_starts_out_of_the_way_once_in_a_boot_when_it_starts_with_the_session(self):
        self.sandbox.store(self.sandbox.settings() | {"TAVRO.LaunchAtLogin.v1": True})
        program = self.sandbox.start("tavro", [built_program("TAVRO_PROGRAM"), "--print-status"])
        found = wait_for(lambda: windows_titled(self.sandbox, TITLE), "the window")
        window = WindowProperties(self.sandbox, found[0])
        window.wait_until_iconic()
        self.recorder.wait_for_connection()
        self.assertTrue(window.is_iconic())
        program.end()
        # The second launch of the boot, whose window has to be in front.
        self.play()
        self.assertFalse(self._window().is_iconic())

    @staticmethod
    def _has_its_shape(window):
        width, height = window.size()
        return abs(width / height - 1280 / 805) <= 0.01

    def _window(self):
        return WindowProperties(self.sandbox, self.application.window)

    def _resize(self, width, height):
        self.sandbox.run(tool("xdotool"), "windowsize", self.application.window, width, height)


class PanelTest(StageTest):
    # High enough for the window with its panels open.
    SCREEN = (1400, 1400)

    def test_opening_a_panel_makes_room_below(self):
        self.play()
        window = WindowProperties(self.sandbox, self.application.window)
        before = window.geometry()
        self.application.surface.toggle_advanced()
        wait_for(lambda: window.geometry() == (*before[:2], 1280, 909), lambda: f"room below; it is {window.geometry()}")
        window.wait_for_limits(*LIMITS[909])
        self.application.surface.toggle_advanced()
        wait_for(lambda: window.geometry() == before, lambda: f"{before} again; it is {window.geometry()}")
        window.wait_for_limits(*LIMITS[805])


class SmallScreenTest(StageTest):
    SCREEN = (1366, 768)

    def test_stays_on_the_screen(self):
        self.play()
        window = WindowProperties(self.sandbox, self.application.window)
        window.wait_for_size((1280, 728))
        left, top, width, height = window.geometry()
        self.assertGreaterEqual((left, top), (0, 0))
        self.assertLessEqual(left + width, self.SCREEN[0])
        self.assertLessEqual(top + height, self.SCREEN[1])


if __name__ == "__main__":
    unittest.main()
