from .display import Display
from .keyboard_tap import KEY_CODES, PLAIN, TapProbe, TapTerminal, repeating_keys
from .testcase import EndToEndTest
from .waiting import wait_for

A = KEY_CODES["a"]
HOTKEY = (KEY_CODES["F9"], PLAIN)


class TapTest(EndToEndTest):
    """A display with a terminal in front, and the tap that takes keys from it."""

    def setUp(self):
        super().setUp()
        self.display = Display(self.sandbox)
        self.terminal = TapTerminal(self.sandbox, self.display)
        self.repeats_before = repeating_keys(self.sandbox)

    def start(self, **values):
        """A tap that is switched on and has taken over the values."""
        self.probe = TapProbe(self.sandbox)
        self.assertTrue(self.probe.creations["made"])
        self.probe.set(enable=1, **values)
        return self.probe

    def modifiers_of_downs(self):
        return [(line["down"], line["modifiers"]) for line in self.probe.events("down")]

    def wait_for_repeats_as_before(self):
        wait_for(
            lambda: repeating_keys(self.sandbox) == self.repeats_before,
            lambda: f"the repeats {self.repeats_before}; they are {repeating_keys(self.sandbox)}",
        )
